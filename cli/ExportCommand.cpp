#include "cli/ExportCommand.h"

#include "cli/ProjectSource.h"
#include "engine/ExportFiles.h"
#include "engine/SettingsRecord.h"
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

std::string exportRevision(const EditRevision& revision, const ImportedProject& imported,
                           const CutEngine& engine, const std::string& folder) {
    const std::string xml =
        engine.exportDocument(revision.cuts, revision.settings.audio, secureUUIDs());
    const std::string record = settingsRecordText(imported, engine, revision);
    const ExportedFiles files =
        writeExportFiles(systemFileCalls(), folder, xml, record, imported.name);
    return fmt::format("{}\n{}\n", files.xml, files.record);
}

CommandResult runExport(const ExportOptions& options, ByteSource& in) {
    if (options.project == standardInput && options.revision == standardInput)
        throw UsageError("Only one of PROJECT and REVISION can be \"-\", the standard input.");
    ProjectImport import = importProjectArgument(options.project, in);
    const ImportedProject imported = import.summary;
    const CutEngine engine(std::move(import));
    const EditRevision revision = readRevisionArgument(options.revision, in);

    CommandResult result;
    result.files = exportRevision(revision, imported, engine, options.output);
    return result;
}

} // namespace shotweaver
