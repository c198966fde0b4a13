#include "persistence/SessionFile.h"

#include "platform/Files.h"

namespace shotweaver {

std::optional<std::string> SessionFile::read() const {
    return readFileIfThere(calls_, sessionFileURL());
}

bool SessionFile::keep() const {
    const std::string path = sessionFileURL();
    if (!fileIsThere(calls_, path)) return false;
    keepFileAs(calls_, path, keptFileURL());
    return true;
}

std::optional<std::string> SessionFile::readKept() const {
    return readFileIfThere(calls_, keptFileURL());
}

void SessionFile::exchangeWithKept() const {
    exchangeFiles(calls_, sessionFileURL(), keptFileURL());
}

void SessionFile::write(const std::function<void(ByteSink&)>& session) const {
    replaceFile(calls_, sessionFileURL(), session);
}

std::string SessionFile::sessionFileURL() const {
    createFolders(calls_, folder_);
    return pathInFolder(folder_, "session-v1.json");
}

std::string SessionFile::keptFileURL() const {
    return pathInFolder(folder_, "replaced-session-v1.json");
}

} // namespace shotweaver
