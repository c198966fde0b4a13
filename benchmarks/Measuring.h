#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace shotweaver::benchmarks {

/// A folder for the time of a measurement.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path path;
};

/// What a program took from its start to its end.
struct ProgramRun {
    double seconds = 0;
    double cpuSeconds = 0; // of the user's and the system's side
    double megabytes =
        0; // resident at the peak, which counts what the caller has when it starts it
};

enum class ProgramOutput { hidden, shown };

/// Runs a program of the search path. Throws `std::runtime_error` when it does not succeed.
ProgramRun runProgram(const std::vector<std::string>& arguments,
                      ProgramOutput output = ProgramOutput::hidden);

/// The file of the program that runs.
std::string ownProgram();

/// Prints what the program that runs has taken so far, and what is resident now.
void printOwnCosts(const std::string& name);

double secondsOf(const std::function<void()>& work);
double median(std::vector<double> values);

/// Prints a row: milliseconds for seconds.
void print(const std::string& name, double seconds);
/// Prints a row that ends a group.
void printRatio(const std::string& name, double ratio);

} // namespace shotweaver::benchmarks
