#pragma once

#include "cli/Command.h"
#include "engine/EditRevision.h"
#include "engine/Project.h"

#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// An edit that was kept: what "generate --json" printed, or a cut list as CSV.
struct EditArgument {
    EditRevision revision; // a CSV's settings are those of a fresh import
    KeptShots kept;
    bool isCsv = false;
};

/// Reads an argument that names a file, or "-" for the standard input. Throws `PlatformError` or
/// `FinalCutImportError`.
EditArgument readEditArgument(const std::string& path, const Project& project,
                              const CommandContext& context);

/// The cuts that a list of rows such as "3,7-9" names, which count from 1. Throws `UsageError`.
std::vector<Cut> cutsInRows(const std::vector<Cut>& cuts, std::string_view rows);

} // namespace shotweaver
