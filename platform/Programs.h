#pragma once

#include "platform/Environment.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The path of a program: an absolute path itself, a bare name along $PATH; nothing when no
/// executable file is there.
std::optional<std::string> findProgram(const std::string& name, const Environment& environment);

/// Starts a program on its own: in a session of its own, in which it outlives this process, without
/// standard input and output, and without anyone having to wait for its end (no zombie stays
/// behind). Returns once it runs, that is once its image was loaded. `command` is its path and its
/// arguments; `folder` its working folder (empty: this process's). Throws `PlatformError` when it
/// cannot be started.
void startProgram(const std::vector<std::string>& command, const std::string& folder = "");

/// What a program that has ended left behind.
struct ProgramResult {
    int status = 0;     // exit status; 128 and the signal's number when a signal ended it
    std::string output; // standard output
    std::string errors; // standard error
};

/// Runs a program to its end, without standard input. `command` as above. Throws `PlatformError`
/// when it cannot be started.
ProgramResult runProgram(const std::vector<std::string>& command);

} // namespace shotweaver
