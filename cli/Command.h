#pragma once

#include <optional>
#include <stdexcept>
#include <string>

namespace shotweaver {

/// What a command has to say once it has run.
struct CommandResult {
    std::string output; // for standard output
    std::string notes;  // for standard error: whole lines
    std::string files;  // paths that were written, a line each: after the output,
                        // or on standard error beside JSON
    bool isJson = false;
    std::optional<std::string> failure; // ends the run with exit status 1
};

/// Wrong usage: exit status 2 with this line and the usage text.
class UsageError : public std::runtime_error {
  public:
    explicit UsageError(const std::string& line) : std::runtime_error(line) {}
};

} // namespace shotweaver
