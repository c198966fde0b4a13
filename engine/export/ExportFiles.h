#pragma once

#include "platform/ByteSink.h"
#include "platform/FileCalls.h"

#include <functional>
#include <string>
#include <string_view>

namespace shotweaver {

/// Paths of the two files of an export.
struct ExportedFiles {
    std::string xml;
    std::string record;
};

/// Writes an export, by `writeXML`, and its settings record side by side into an existing folder,
/// under the first name that neither has: the project's name and " Shotweaver", then the same with
/// " 2", " 3" and so on. Nothing is ever written over.
///
/// Throws `FinalCutImportError` when every name is taken, or when the record could not be written
/// after the XML was (the XML stays); `PlatformError` with the file system's text otherwise, and
/// then nothing was written.
ExportedFiles writeExportFiles(FileCalls& calls, const std::string& folder,
                               const std::function<void(ByteSink&)>& writeXML,
                               std::string_view recordText, std::string_view projectName);

/// Writes a cut list in the same way, with ".csv", and gives its path. Throws the same.
std::string writeCutListFile(FileCalls& calls, const std::string& folder, std::string_view csv,
                             std::string_view projectName);

} // namespace shotweaver
