#include "cli/ExportCommand.h"

#include "cli/EditArgument.h"
#include "cli/Grammar.h"
#include "cli/HandOff.h"
#include "cli/ProjectSource.h"
#include "cli/SettingsFlags.h"
#include "engine/export/ExportDocument.h"
#include "engine/export/ExportFiles.h"
#include "engine/export/SettingsRecord.h"

#include <fmt/format.h>

#include <memory>

namespace shotweaver {

namespace {

struct ExportOptions {
    std::string project;
    std::string revision; // a file, or "-"
    std::optional<std::string> output;
    SettingsFlags flags; // for a CSV cut list
    bool open = false;
};

constexpr const char* footer =
    R"(
REVISION is what "generate --json" printed, perhaps edited by hand, or a cut list as CSV: a
header with the columns Start and Camera, and a line for each shot. Its cuts are exported
as they are. A CSV's audio and main camera are those of a fresh import, or of the flags.
Existing files are never replaced: a second export takes the name with " 2".

Examples:
  shotweaver generate "Sunday.fcpxml" --json > edit.json
  shotweaver export "Sunday.fcpxml" edit.json --output out
  shotweaver export "Sunday.fcpxml" cuts.csv --audio Mixer --output out
  shotweaver generate "Sunday.fcpxml" --json | shotweaver export "Sunday.fcpxml" - --output out)";

CommandResult run(const ExportOptions& options, const CommandContext& context) {
    if (options.project == standardInput && options.revision == standardInput)
        throw UsageError("Only one of PROJECT and REVISION can be \"-\", the standard input.");
    const Project project(importProjectArgument(options.project, context));
    EditArgument edit = readEditArgument(options.revision, project, context);
    if (!edit.isCsv && areGiven(options.flags))
        throw UsageError("--main-camera and --audio are for a CSV cut list: REVISION has its own.");
    edit.revision.settings =
        withFlags(std::move(edit.revision.settings), options.flags, project, context.files);

    CommandResult result;
    exportRevision(edit.revision, edit.kept, project, {*options.output, options.open}, context,
                   result);
    return result;
}

} // namespace

Verb addExport(CLI::App& program) {
    const auto options = std::make_shared<ExportOptions>();
    CLI::App& verb = *program.add_subcommand(
        "export", "Export an edit that generate --json printed, or a cut list");
    addProject(verb, options->project);
    verb.add_option("REVISION", options->revision,
                    "The edit's JSON or CSV file, or - for the standard input")
        ->required()
        ->type_name("");
    addAngleFlags(verb, options->flags);
    addOutput(verb, options->output, "Folder for the two files")->required();
    addOpen(verb, options->open);
    verb.footer(footer);
    return {&verb, "PROJECT REVISION --output DIR [OPTIONS]",
            [options](const CommandContext& context) { return run(*options, context); }};
}

void exportRevision(const EditRevision& revision, const KeptShots& kept, const Project& project,
                    const ExportFolder& output, const CommandContext& context,
                    CommandResult& result) {
    const ExportDocument document(project.engine, revision.cuts, revision.settings.audio,
                                  secureUUIDs());
    const std::string record = settingsRecordText(project, revision, kept);
    const ExportedFiles files = writeExportFiles(
        context.files, output.path, [&](ByteSink& sink) { document.write(sink); }, record,
        project.summary.name);
    result.files = fmt::format("{}\n{}\n", files.xml, files.record);
    if (output.open) result.failure = handOff(files.xml, context.workspace);
}

} // namespace shotweaver
