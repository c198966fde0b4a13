#pragma once

#include "engine/import/ProjectImport.h"
#include "platform/ByteSource.h"

#include <string>

namespace shotweaver {

/// What a PROJECT or REVISION argument of "-" stands for.
inline constexpr const char* standardInput = "-";

/// Imports a PROJECT argument: a file, a bundle, or "-" for `in`. Throws `FinalCutImportError` or
/// `PlatformError`.
ProjectImport importProjectArgument(const std::string& project, ByteSource& in);

} // namespace shotweaver
