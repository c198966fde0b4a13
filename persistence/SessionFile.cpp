#include "persistence/SessionFile.h"

#include "platform/Files.h"

namespace shotweaver {

std::optional<std::string> SessionFile::read() const {
    const std::string path = sessionFileURL();
    if (!fileExists(calls_, path)) return std::nullopt;
    return readFile(calls_, path);
}

void SessionFile::write(const std::vector<std::string_view>& pieces) const {
    replaceFile(calls_, sessionFileURL(), pieces);
}

std::string SessionFile::sessionFileURL() const {
    createFolders(calls_, folder_);
    return pathInFolder(folder_, "session-v1.json");
}

} // namespace shotweaver
