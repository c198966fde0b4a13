#include "cli/ProjectSource.h"

#include "planning/ProjectFile.h"

namespace shotweaver {

ProjectImport importProjectArgument(const std::string& project, const CommandContext& context) {
    return project == standardInput ? readProject(context.in)
                                    : readProject(*openProjectFile(context.files, project));
}

} // namespace shotweaver
