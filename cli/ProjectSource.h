#pragma once

#include <iosfwd>
#include <string>

namespace shotweaver {

/// What a PROJECT or REVISION argument of "-" stands for.
inline constexpr const char* standardInput = "-";

/// All bytes of the standard input. Throws `PlatformError` when it cannot be read.
std::string readStandardInput(std::istream& in);

/// The FCPXML bytes of a PROJECT argument: a file, a bundle, or "-". Throws `FinalCutImportError`
/// or `PlatformError`.
std::string readProjectArgument(const std::string& project, std::istream& in);

} // namespace shotweaver
