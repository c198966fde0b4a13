#pragma once

#include "cli/Command.h"
#include "platform/ByteSource.h"

#include <string>

namespace shotweaver {

struct InspectOptions {
    std::string project;
    bool json = false;
};

/// Summarises a project. A project that imports but whose engine is refused is still summarised:
/// the result then has both an output and a failure. Throws when the import itself fails.
CommandResult runInspect(const InspectOptions& options, ByteSource& in);

} // namespace shotweaver
