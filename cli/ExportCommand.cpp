#include "cli/ExportCommand.h"

#include "cli/Grammar.h"
#include "cli/HandOff.h"
#include "cli/ProjectSource.h"
#include "engine/export/ExportDocument.h"
#include "engine/export/ExportFiles.h"
#include "engine/export/SettingsRecord.h"
#include "persistence/RecordJson.h"
#include "platform/Files.h"

#include <fmt/format.h>

#include <memory>

namespace shotweaver {

namespace {

struct ExportOptions {
    std::string project;
    std::string revision; // a file, or "-"
    std::optional<std::string> output;
    bool open = false;
};

constexpr const char* footer =
    R"(
REVISION is what "generate --json" printed, perhaps edited by hand. Its cuts are exported
as they are. Existing files are never replaced: a second export takes the name with " 2".

Examples:
  shotweaver generate "Sunday.fcpxml" --json > edit.json
  shotweaver export "Sunday.fcpxml" edit.json --output out
  shotweaver generate "Sunday.fcpxml" --json | shotweaver export "Sunday.fcpxml" - --output out)";

EditRevision readRevisionArgument(const std::string& path, const CommandContext& context) {
    const std::string text =
        path == standardInput ? readAll(context.in) : readFile(context.files, path);
    return readRevision(JsonReader(parseJson(text)));
}

CommandResult run(const ExportOptions& options, const CommandContext& context) {
    if (options.project == standardInput && options.revision == standardInput)
        throw UsageError("Only one of PROJECT and REVISION can be \"-\", the standard input.");
    const Project project(importProjectArgument(options.project, context));
    const EditRevision revision = readRevisionArgument(options.revision, context);

    CommandResult result;
    exportRevision(revision, project, {*options.output, options.open}, context, result);
    return result;
}

} // namespace

Verb addExport(CLI::App& program) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App& verb =
        *program.add_subcommand("export", "Export an edit that generate --json printed");
    addProject(verb, options->project);
    verb.add_option("REVISION", options->revision,
                    "The edit's JSON file, or - for the standard input")
        ->required()
        ->type_name("");
    addOutput(verb, options->output, "Folder for the two files")->required();
    addOpen(verb, options->open);
    verb.footer(footer);
    return {&verb, "PROJECT REVISION --output DIR [--open]",
            [options](const CommandContext& context) { return run(*options, context); }};
}

void exportRevision(const EditRevision& revision, const Project& project,
                    const ExportFolder& output, const CommandContext& context,
                    CommandResult& result) {
    const ExportDocument document(project.engine, revision.cuts, revision.settings.audio,
                                  secureUUIDs());
    const std::string record = settingsRecordText(project, revision, {});
    const ExportedFiles files = writeExportFiles(
        context.files, output.path, [&](ByteSink& sink) { document.write(sink); }, record,
        project.summary.name);
    result.files = fmt::format("{}\n{}\n", files.xml, files.record);
    if (output.open) result.failure = handOff(files.xml, context.workspace);
}

} // namespace shotweaver
