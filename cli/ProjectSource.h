#pragma once

#include "cli/Command.h"
#include "engine/import/ProjectImport.h"

#include <string>

namespace shotweaver {

/// What a PROJECT or REVISION argument of "-" stands for.
inline constexpr const char* standardInput = "-";
/// What a FILE to write of "-" stands for.
inline constexpr const char* standardOutput = "-";

/// Imports a PROJECT argument: a file, a bundle, or "-" for the standard input. Throws
/// `FinalCutImportError` or `PlatformError`.
ProjectImport importProjectArgument(const std::string& project, const CommandContext& context);

} // namespace shotweaver
