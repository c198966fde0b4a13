#include "planning/ProjectFile.h"

#include "engine/FinalCutImportError.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace shotweaver {

namespace {

/// In lower case and without its dot; empty when the name has none or begins with its only one.
std::string pathExtension(const std::string& path) {
    const std::string name = fileName(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? "" : lowercased(name.substr(dot + 1));
}

} // namespace

bool hasProjectExtension(const std::string& path) {
    const std::string extension = pathExtension(path);
    return extension == "fcpxml" || extension == "fcpxmld";
}

std::unique_ptr<ByteSource> openProjectFile(FileCalls& calls, const std::string& path) {
    const std::string extension = pathExtension(path);
    if (extension == "fcpxmld")
        return std::make_unique<FileSource>(calls, pathInFolder(path, "Info.fcpxml"));
    if (extension == "fcpxml") return std::make_unique<FileSource>(calls, path);
    throw FinalCutImportError::invalid(chooseProjectText);
}

} // namespace shotweaver
