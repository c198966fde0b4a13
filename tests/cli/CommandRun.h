#pragma once

#include "cli/CommandLine.h"

#include <ostream>
#include <sstream>
#include <string>
#include <vector>

namespace shotweaver::test {

/// All that a command leaves behind.
struct Outcome {
    int status = 0;
    std::string out;
    std::string err;

    bool operator==(const Outcome&) const = default;
};

inline void PrintTo(const Outcome& outcome, std::ostream* out) {
    *out << "status " << outcome.status << "\n--- out\n"
         << outcome.out << "--- err\n"
         << outcome.err << "---";
}

inline Outcome run(const std::vector<std::string>& arguments, const std::string& input = {}) {
    MemorySource in(input);
    std::ostringstream out;
    std::ostringstream err;
    const int status = runCommandLine(arguments, {in, out, err});
    return {status, out.str(), err.str()};
}

/// The same with a standard output that takes nothing, as on a full disk.
inline Outcome runWithFullOutput(const std::vector<std::string>& arguments) {
    class Full : public std::streambuf {};
    Full full;
    MemorySource in("");
    std::ostream out(&full);
    std::ostringstream err;
    const int status = runCommandLine(arguments, {in, out, err});
    return {status, "", err.str()};
}

/// What a failure looks like.
inline Outcome failure(const std::string& message) {
    return {1, "", "shotweaver: " + message + "\n"};
}

/// What wrong usage of a verb with the options of `inspect` and `generate` looks like.
inline Outcome wrongUsage(const std::string& verb, const std::string& line) {
    return {2, "",
            "shotweaver: " + line + "\nUsage: shotweaver " + verb +
                " PROJECT [OPTIONS]\n\"shotweaver " + verb + " --help\" explains more.\n"};
}

inline std::string firstLine(const std::string& text) {
    return text.substr(0, text.find('\n'));
}

} // namespace shotweaver::test
