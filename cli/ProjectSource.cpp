#include "cli/ProjectSource.h"

#include "planning/ProjectFile.h"

namespace shotweaver {

ProjectImport importProjectArgument(const std::string& project, ByteSource& in) {
    return project == standardInput ? readProject(in)
                                    : readProject(*openProjectFile(systemFileCalls(), project));
}

} // namespace shotweaver
