#include "benchmarks/Measuring.h"

#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace shotweaver::benchmarks {

namespace fs = std::filesystem;

namespace {

fs::path newFolder() {
    std::string pattern = (fs::temp_directory_path() / "shotweaver-benchmark-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no folder to work in");
    return pattern;
}

double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

ProgramRun runOf(const rusage& usage, double wallSeconds) {
    return {wallSeconds, seconds(usage.ru_utime) + seconds(usage.ru_stime),
            static_cast<double>(usage.ru_maxrss) / 1024};
}

double residentMegabytes() {
    std::ifstream file("/proc/self/statm");
    double pages = 0;
    double resident = 0;
    file >> pages >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024);
}

} // namespace

TemporaryFolder::TemporaryFolder() : path(newFolder()) {}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
}

ProgramRun runProgram(const std::vector<std::string>& arguments, ProgramOutput output) {
    std::vector<char*> pointers;
    for (const std::string& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str()));
    pointers.push_back(nullptr);

    int status = 0;
    rusage usage{};
    const double wallSeconds = secondsOf([&] {
        const pid_t child = fork();
        if (child == 0) {
            if (output == ProgramOutput::hidden) dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
            execvp(pointers[0], pointers.data());
            _exit(127);
        }
        wait4(child, &status, 0, &usage);
    });
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        throw std::runtime_error(arguments.front() + " failed");
    return runOf(usage, wallSeconds);
}

std::string ownProgram() {
    return fs::read_symlink("/proc/self/exe").string();
}

void printOwnCosts(const std::string& name) {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const ProgramRun run = runOf(usage, 0);
    fmt::print("{:<58} {:>9.2f} s of the processor, {:.0f} MB at the peak, {:.0f} MB after\n", name,
               run.cpuSeconds, run.megabytes, residentMegabytes());
}

double secondsOf(const std::function<void()>& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void print(const std::string& name, double seconds) {
    fmt::print("{:<58} {:>9.2f} ms\n", name, seconds * 1000);
}

void printRatio(const std::string& name, double ratio) {
    fmt::print("{:<58} {:>9.2f}\n\n", name, ratio);
}

} // namespace shotweaver::benchmarks
