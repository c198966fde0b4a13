// Runs whole programs on the large document, turn and turn about, and prints wall time and peak
// memory of each beside those of xmllint, the yardstick of what reading such a file costs.

#include "benchmarks/BenchmarkDocuments.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace shotweaver::benchmarks {
namespace {

namespace fs = std::filesystem;

constexpr int rounds = 5;

struct Run {
    double seconds;
    double megabytes; // resident at the peak
};

struct Program {
    std::string name;
    std::vector<std::string> arguments;
    std::vector<Run> runs;
};

Run measure(const Program& program) {
    std::vector<char*> arguments;
    for (const std::string& argument : program.arguments)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);

    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child == 0) {
        const int nothing = open("/dev/null", O_WRONLY);
        dup2(nothing, STDOUT_FILENO);
        execvp(arguments[0], arguments.data());
        _exit(127);
    }
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    const std::chrono::duration<double> elapsed = std::chrono::steady_clock::now() - start;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(program.name + " failed");
    return {elapsed.count(), static_cast<double>(usage.ru_maxrss) / 1024};
}

template <class Field>
double median(std::vector<Run> runs, Field field) {
    std::sort(runs.begin(), runs.end(),
              [&](const Run& a, const Run& b) { return a.*field < b.*field; });
    return runs[runs.size() / 2].*field;
}

/// Runs both in turn and prints their medians and ratios.
void compare(Program ours, Program yardstick) {
    for (int round = 0; round < rounds; ++round) {
        yardstick.runs.push_back(measure(yardstick));
        ours.runs.push_back(measure(ours));
    }
    for (const Program* program : {&yardstick, &ours})
        fmt::print("{:<42} {:>8.2f} s {:>9.0f} MB\n", program->name,
                   median(program->runs, &Run::seconds), median(program->runs, &Run::megabytes));
    fmt::print("{:<42} {:>8.2f}   {:>9.2f}\n\n", "ratio",
               median(ours.runs, &Run::seconds) / median(yardstick.runs, &Run::seconds),
               median(ours.runs, &Run::megabytes) / median(yardstick.runs, &Run::megabytes));
}

void run(const std::string& shotweaver) {
    std::string pattern = (fs::temp_directory_path() / "shotweaver-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder to work in");
    const fs::path folder = pattern;
    const std::string document = (folder / "Large.fcpxml").string();
    std::ofstream(document, std::ios::binary) << largeDocument(); // not kept: a child's peak
                                                                  // counts what it is forked from
    fmt::print("Whole programs on a document of {:.0f} MB, medians of {} rounds\n\n",
               static_cast<double>(fs::file_size(document)) / 1e6, rounds);

    compare({"shotweaver inspect", {shotweaver, "inspect", document}, {}},
            {"xmllint --noout", {"xmllint", "--noout", "--huge", document}, {}});
    compare({"shotweaver generate --output",
             {shotweaver, "generate", document, "--output", folder.string()},
             {}},
            {"xmllint --format --output",
             {"xmllint", "--format", "--huge", "--output", (folder / "formatted.xml").string(),
              document},
             {}});
    fs::remove_all(folder);
}

} // namespace
} // namespace shotweaver::benchmarks

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "Usage: command_benchmark SHOTWEAVER\n";
        return 2;
    }
    try {
        shotweaver::benchmarks::run(argv[1]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
