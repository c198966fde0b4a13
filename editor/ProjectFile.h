#pragma once

#include "platform/FileCalls.h"

#include <string>

namespace shotweaver {

/// The FCPXML bytes of a ".fcpxml" file, or of a ".fcpxmld" bundle (a folder, read through its
/// "Info.fcpxml"). Throws `FinalCutImportError` for any other name, and `PlatformError` when the
/// file cannot be read.
std::string readProjectBytes(FileCalls& calls, const std::string& path);

} // namespace shotweaver
