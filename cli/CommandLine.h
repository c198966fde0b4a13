#pragma once

#include "host/SystemWorkspace.h"
#include "platform/ByteSource.h"
#include "platform/Environment.h"

#include <iosfwd>
#include <memory>
#include <string>
#include <vector>

namespace shotweaver {

/// What the command line reads and writes, and the world around it.
struct CommandStreams {
    ByteSource& in;
    std::ostream& out;
    std::ostream& err;
    Environment environment = systemEnvironment();                       // tells where presets are
    std::shared_ptr<Workspace> workspace = systemWorkspace(environment); // opens an export
};

/// Runs one command. `arguments` come without the program's name. Gives the exit status: 0 for
/// success, 1 for a failure, 2 for wrong usage. Throws nothing.
int runCommandLine(const std::vector<std::string>& arguments, const CommandStreams& streams);

} // namespace shotweaver
