#include "cli/ProjectSource.h"

#include "editor/ProjectFile.h"
#include "platform/PlatformError.h"

#include <istream>

namespace shotweaver {

std::size_t StreamSource::read(char* into, std::size_t count) {
    in_.read(into, static_cast<std::streamsize>(count));
    if (in_.bad()) throw PlatformError("The standard input could not be read.");
    return static_cast<std::size_t>(in_.gcount());
}

ProjectImport importProjectArgument(const std::string& project, std::istream& in) {
    if (project != standardInput) return readProject(*openProjectFile(systemFileCalls(), project));
    StreamSource source(in);
    return readProject(source);
}

} // namespace shotweaver
