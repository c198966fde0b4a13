#pragma once

#include "platform/ByteSource.h"
#include "platform/FileCalls.h"

#include <memory>
#include <string>

namespace shotweaver {

inline constexpr const char* chooseProjectText = "Choose a .fcpxml file or .fcpxmld bundle.";

/// True for the names that a project's file or bundle may have; letters of either case.
bool hasProjectExtension(const std::string& path);

/// Opens the FCPXML of a ".fcpxml" file, or of a ".fcpxmld" bundle (a folder, read through its
/// "Info.fcpxml"). Throws `FinalCutImportError` for any other name, and `PlatformError` when the
/// file cannot be opened. `calls` must outlive the source.
std::unique_ptr<ByteSource> openProjectFile(FileCalls& calls, const std::string& path);

} // namespace shotweaver
