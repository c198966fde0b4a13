#include "engine/export/ExportFiles.h"

#include "engine/FinalCutImportError.h"
#include "platform/Files.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>

namespace shotweaver {

namespace {

constexpr int maximumNumber = 10000;
constexpr std::size_t maximumNameCharacters = 100;

std::string baseName(std::string_view projectName) {
    std::string name(projectName);
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c == '/' || c == ':' || c == '\\'; }, '_');
    const std::string_view shortened = firstCharacters(name, maximumNameCharacters);
    return fmt::format("{} Shotweaver", shortened.empty() ? "Project" : shortened);
}

/// The first path without extension that is free with all of them.
std::string firstFreeStem(FileCalls& calls, const std::string& folder, std::string_view projectName,
                          std::initializer_list<const char*> extensions) {
    const std::string base = baseName(projectName);
    for (int number = 1; number <= maximumNumber; ++number) {
        std::string stem =
            pathInFolder(folder, number == 1 ? base : fmt::format("{} {}", base, number));
        if (std::none_of(extensions.begin(), extensions.end(), [&](const char* extension) {
                return fileExists(calls, stem + extension);
            }))
            return stem;
    }
    throw FinalCutImportError::invalid(
        "Choose another folder or clear space for a new export name.");
}

} // namespace

ExportedFiles writeExportFiles(FileCalls& calls, const std::string& folder,
                               const std::function<void(ByteSink&)>& writeXML,
                               std::string_view recordText, std::string_view projectName) {
    const std::string stem =
        firstFreeStem(calls, folder, projectName, {".fcpxml", ".settings.txt"});
    ExportedFiles files{stem + ".fcpxml", stem + ".settings.txt"};
    writeNewFile(calls, files.xml, writeXML);
    try {
        writeNewFile(calls, files.record, recordText);
    } catch (const PlatformError& error) {
        throw FinalCutImportError::invalid(
            fmt::format("The XML was saved as {}, but the settings record could not be saved: {}",
                        fileName(files.xml), error.what()));
    }
    return files;
}

std::string writeCutListFile(FileCalls& calls, const std::string& folder, std::string_view csv,
                             std::string_view projectName) {
    std::string path = firstFreeStem(calls, folder, projectName, {".csv"}) + ".csv";
    writeNewFile(calls, path, csv);
    return path;
}

} // namespace shotweaver
