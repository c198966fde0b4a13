#include "cli/ExportCommand.h"

#include "cli/HandOff.h"
#include "cli/ProjectSource.h"
#include "engine/export/ExportFiles.h"
#include "engine/export/SettingsRecord.h"
#include "persistence/RecordJson.h"
#include "platform/Files.h"

#include <fmt/format.h>

namespace shotweaver {

namespace {

EditRevision readRevisionArgument(const std::string& path, ByteSource& in) {
    const std::string text =
        path == standardInput ? readAll(in) : readFile(systemFileCalls(), path);
    return readRevision(JsonReader(parseJson(text)));
}

} // namespace

void exportRevision(const EditRevision& revision, const Project& project,
                    const ExportFolder& output, Workspace& workspace, CommandResult& result) {
    const std::string xml =
        project.engine.exportDocument(revision.cuts, revision.settings.audio, secureUUIDs());
    const std::string record = settingsRecordText(project, revision);
    const ExportedFiles files =
        writeExportFiles(systemFileCalls(), output.path, xml, record, project.summary.name);
    result.files = fmt::format("{}\n{}\n", files.xml, files.record);
    if (output.open) result.failure = handOff(files.xml, workspace);
}

CommandResult runExport(const ExportOptions& options, ByteSource& in, Workspace& workspace) {
    if (options.project == standardInput && options.revision == standardInput)
        throw UsageError("Only one of PROJECT and REVISION can be \"-\", the standard input.");
    const Project project(importProjectArgument(options.project, in));
    const EditRevision revision = readRevisionArgument(options.revision, in);

    CommandResult result;
    exportRevision(revision, project, options.output, workspace, result);
    return result;
}

} // namespace shotweaver
