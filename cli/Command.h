#pragma once

#include "host/Workspace.h"
#include "platform/ByteSource.h"
#include "platform/Environment.h"
#include "platform/FileCalls.h"

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>

namespace CLI { // NOLINT: the library's name
class App;
}

namespace shotweaver {

/// What a verb works with.
struct CommandContext {
    ByteSource& in;                 // the standard input
    const Environment& environment; // tells where presets are
    FileCalls& files;
    Workspace& workspace; // opens an export
};

/// What a command has to say once it has run.
struct CommandResult {
    std::string output;                 // for standard output
    std::string notes;                  // for standard error: whole lines
    std::string files;                  // paths that were written, a line each: after the output,
                                        // or on standard error beside data
    bool isData = false;                // the output is for another program: JSON or CSV
    std::optional<std::string> failure; // ends the run with exit status 1
};

/// A verb of the command line. Each has a source of its own, whose one function adds the verb's
/// grammar to the program's.
struct Verb {
    CLI::App* grammar = nullptr; // owned by the program's
    std::string arguments;       // as the usage line has them
    std::function<CommandResult(const CommandContext&)> run;
};

/// Wrong usage: exit status 2 with this line and the usage text.
class UsageError : public std::runtime_error {
  public:
    explicit UsageError(const std::string& line) : std::runtime_error(line) {}
};

} // namespace shotweaver
