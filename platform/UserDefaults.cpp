#include "platform/UserDefaults.h"

#include "platform/FileURL.h"
#include "platform/Files.h"

#include <utility>

namespace shotweaver {

namespace {

/// The file of an entry: each name has its own, and none is "", "." or "..".
std::string entryPath(const std::string& folder, std::string_view name) {
    std::string file = percentEncoded(name, "-._");
    if (file.find_first_not_of('.') == std::string::npos) file += '%';
    return pathInFolder(folder, file);
}

} // namespace

UserDefaults::UserDefaults(FileCalls& calls, std::string folder)
    : calls_(calls), folder_(std::move(folder)) {}

std::string UserDefaults::data(std::string_view name) const {
    return readFileIfThere(calls_, entryPath(folder_, name)).value_or("");
}

void UserDefaults::setData(std::string_view name, std::string_view bytes) {
    createFolders(calls_, folder_);
    replaceFile(calls_, entryPath(folder_, name), bytes);
}

} // namespace shotweaver
