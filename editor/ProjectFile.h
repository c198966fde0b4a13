#pragma once

#include "platform/ByteSource.h"
#include "platform/FileCalls.h"

#include <memory>
#include <string>

namespace shotweaver {

/// Opens the FCPXML of a ".fcpxml" file, or of a ".fcpxmld" bundle (a folder, read through its
/// "Info.fcpxml"). Throws `FinalCutImportError` for any other name, and `PlatformError` when the
/// file cannot be opened. `calls` must outlive the source.
std::unique_ptr<ByteSource> openProjectFile(FileCalls& calls, const std::string& path);

} // namespace shotweaver
