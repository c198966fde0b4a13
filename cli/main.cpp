#include "cli/CommandLine.h"
#include "platform/Files.h"

#include <csignal>
#include <iostream>

int main(int argc, char** argv) {
    // A reader that goes away is a failed write, reported like any other.
    std::signal(SIGPIPE, SIG_IGN);
    shotweaver::FileSource input(shotweaver::systemFileCalls(), 0, "standard input");
    return shotweaver::runCommandLine({argv + 1, argv + argc}, {input, std::cout, std::cerr});
}
