#include "cli/CommandLine.h"

#include <csignal>
#include <iostream>

int main(int argc, char** argv) {
    // A reader that goes away is a failed write, reported like any other.
    std::signal(SIGPIPE, SIG_IGN);
    return shotweaver::runCommandLine({argv + 1, argv + argc}, {std::cin, std::cout, std::cerr});
}
