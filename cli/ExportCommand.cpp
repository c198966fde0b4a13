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

void exportRevision(const EditRevision& revision, const ImportedProject& imported,
                    const CutEngine& engine, const ExportFolder& output,
                    const Environment& environment, CommandResult& result) {
    const std::string xml =
        engine.exportDocument(revision.cuts, revision.settings.audio, secureUUIDs());
    const std::string record = settingsRecordText(imported, engine, revision);
    const ExportedFiles files =
        writeExportFiles(systemFileCalls(), output.path, xml, record, imported.name);
    result.files = fmt::format("{}\n{}\n", files.xml, files.record);
    if (output.open) result.failure = handOff(files.xml, environment);
}

CommandResult runExport(const ExportOptions& options, ByteSource& in,
                        const Environment& environment) {
    if (options.project == standardInput && options.revision == standardInput)
        throw UsageError("Only one of PROJECT and REVISION can be \"-\", the standard input.");
    ProjectImport import = importProjectArgument(options.project, in);
    const ImportedProject imported = import.summary;
    const CutEngine engine(std::move(import));
    const EditRevision revision = readRevisionArgument(options.revision, in);

    CommandResult result;
    exportRevision(revision, imported, engine, options.output, environment, result);
    return result;
}

} // namespace shotweaver
