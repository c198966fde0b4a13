#include "persistence/SessionFile.h"

#include "platform/Files.h"

namespace shotweaver {

std::optional<std::string> SessionFile::read() const {
    const std::string path = sessionFileURL();
    if (!fileExists(calls_, path)) return std::nullopt;
    return readFile(calls_, path);
}

void SessionFile::write(const std::function<void(ByteSink&)>& session) const {
    replaceFile(calls_, sessionFileURL(), session);
}

std::string SessionFile::sessionFileURL() const {
    createFolders(calls_, folder_);
    return pathInFolder(folder_, "session-v1.json");
}

} // namespace shotweaver
