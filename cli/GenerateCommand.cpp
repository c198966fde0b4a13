#include "cli/GenerateCommand.h"

#include "cli/EditArgument.h"
#include "cli/ExportCommand.h"
#include "cli/Grammar.h"
#include "cli/PresetsCommand.h"
#include "cli/ProjectSource.h"
#include "cli/SettingsFlags.h"
#include "cli/TextTable.h"
#include "cli/Warnings.h"
#include "engine/EditRevision.h"
#include "engine/FinalCutImportError.h"
#include "engine/SettingLimits.h"
#include "persistence/RecordJson.h"
#include "planning/CutListCsv.h"
#include "planning/CutReasons.h"
#include "planning/EditPlan.h"
#include "planning/EditTexts.h"
#include "planning/PresetSettings.h"
#include "planning/ProjectDefaults.h"
#include "platform/Dates.h"
#include "platform/Files.h"
#include "platform/Locale.h"
#include "platform/NumberText.h"
#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <limits>
#include <memory>

namespace shotweaver {

namespace {

struct GenerateOptions {
    std::string project;
    std::optional<std::string> preset; // name
    std::optional<std::string> settingsFile;
    SettingsFlags flags;
    std::optional<std::string> from; // an edit
    std::optional<std::string> keep; // rows of it
    std::optional<std::string> seed;
    std::optional<std::string> csv;    // file, or "-" for the standard output
    std::optional<std::string> output; // folder
    bool why = false;
    bool open = false; // hand the export to Final Cut Pro
    bool json = false;
};

constexpr const char* footer =
    R"(
A is an angle: its identifier, or its name when no other angle has the same one.
Settings start as a fresh import leaves them: the first camera is the main camera, all
others are included, at 70 percent for the main camera. --preset comes next, then
--settings, then the other flags. With --from, the settings of that edit come first, and
its kept shots stay: those of --keep, counted from 1, or those that it marks.

Examples:
  shotweaver generate "Sunday.fcpxml"
  shotweaver generate "Sunday.fcpxml" --main-camera Wide --main-share 60 --output out
  shotweaver generate "Sunday.fcpxml" --frequency Pulpit=8 --return-time Band=120
  shotweaver generate "Sunday.fcpxml" --opening Wide=20 --closing Wide=15
  shotweaver generate "Sunday.fcpxml" --section "Pulpit,01:05:30;00,01:07:10;00,Prayer"
  shotweaver generate "Sunday.fcpxml" --preset "Sunday sermon" --output out --open
  shotweaver generate "Sunday.fcpxml" --seed 7 --json > edit.json
  shotweaver generate "Sunday.fcpxml" --from edit.json --keep 3,7-9 --output out
  shotweaver generate "Sunday.fcpxml" --why --csv cuts.csv
  shotweaver generate "Sunday.fcpxml" --cut-at-markers --follow-markers --output out
  shotweaver generate "Sunday.fcpxml" --cut-points beats.txt --output out)";

std::unique_ptr<RandomSource> randomSource(const std::optional<std::string>& seed) {
    if (!seed) return std::make_unique<SecureRandom>();
    const auto number = parseUnsigned(*seed);
    if (!number)
        throw UsageError(
            fmt::format("--seed: \"{}\" is not a whole number of at most 64 bits.", *seed));
    return std::make_unique<SeededRandom>(*number);
}

void requireOrderedRanges(const EditSettings& settings) {
    if (const auto reversed = reversedRange(settings))
        throw UsageError(fmt::format(
            "--settings: the shortest {} shot, {} seconds, is longer than the longest, {}.",
            reversed->isMain ? "main" : "other", shortestDecimal(reversed->minimum),
            shortestDecimal(reversed->maximum)));
}

void requireFewCutTimes(const EditSettings& settings) {
    if (settings.cutTimes.size() > limits::cutTimes)
        throw UsageError("--settings: cutTimes has more than 20,000 times.");
}

/// Settings whose ranges no given bound can reverse.
EditSettings widestRanges() {
    EditSettings settings;
    settings.mainMinimum = settings.otherMinimum = std::numeric_limits<double>::lowest();
    settings.mainMaximum = settings.otherMaximum = std::numeric_limits<double>::max();
    return settings;
}

EditSettings withSettingsFile(EditSettings settings, const std::string& path, FileCalls& files) {
    const std::string text = readFile(files, path);
    try {
        const Json json = parseJson(text);
        // On its own first: flags do not put right what the file has wrong.
        const EditSettings given = readSettingsOver(JsonReader(json), widestRanges());
        requireOrderedRanges(given);
        requireFewCutTimes(given);
        return readSettingsOver(JsonReader(json), std::move(settings));
    } catch (const PlatformError& error) {
        throw UsageError(fmt::format("--settings: {}", error.what()));
    }
}

/// The edit of --from; a fresh import's settings and no cuts without one.
EditArgument startingEdit(const GenerateOptions& options, const Project& project,
                          const CommandContext& context) {
    if (options.from) return readEditArgument(*options.from, project, context);
    EditArgument none;
    none.revision.settings = importedSettings(project, {});
    return none;
}

/// The settings changed by the preset, the file and the flags. Notes what the preset was matched
/// to.
EditSettings plannedSettings(EditSettings settings, const GenerateOptions& options,
                             const Project& project, const CommandContext& context,
                             CommandResult& result) {
    if (options.preset) {
        AppliedPreset applied =
            appliedPreset(presetNamed(*options.preset, context), std::move(settings), &project);
        settings = std::move(applied.settings);
        result.notes += oneLine(applied.notice) + "\n";
    }
    if (options.settingsFile)
        settings = withSettingsFile(std::move(settings), *options.settingsFile, context.files);
    settings = withFlags(std::move(settings), options.flags, project, context.files);
    if (options.settingsFile) requireOrderedRanges(settings);
    return settings;
}

/// An edit with these settings; nothing, with the result's failure, when none can be made.
std::optional<EditRevision> generated(EditSettings settings, const Project& project,
                                      const std::vector<Cut>& kept, RandomSource& random,
                                      CommandResult& result) {
    const UUIDMaker makeUUID = secureUUIDs();
    try {
        std::vector<Cut> cuts = generateCutList(settings, project, kept, random, makeUUID);
        return EditRevision{makeUUID(), secondsSince2001Now(), std::move(settings),
                            std::move(cuts)};
    } catch (const FinalCutImportError& error) {
        if (const auto warning = coverageWarning(coverageReport(settings, project, kept), settings,
                                                 project, userLocale()))
            result.notes += fmt::format("warning: {}\n", oneLine(*warning));
        result.failure = error.what();
        return std::nullopt;
    }
}

/// The table with each shot's reasons, where there are some, indented under it.
std::string cutTable(const std::vector<Cut>& cuts, const Project& project,
                     const std::vector<std::vector<std::string>>& reasons) {
    const CutEngine& engine = project.engine;
    TextTable table({{"Start (Timecode)"}, {"Camera"}, {"Seconds", Align::right}});
    for (const Cut& cut : cuts)
        table.add({engine.timecode(cut.start), project.label(cut.angle),
                   fixedDecimal(engine.seconds(cut.duration), 2)});
    if (reasons.empty()) return table.text();
    const std::string lines = table.text();
    std::string text;
    std::size_t line = 0; // the first one holds the titles
    for (const std::string_view each : split(std::string_view(lines), '\n')) {
        if (each.empty()) break; // behind the last one
        text += fmt::format("{}\n", each);
        if (line > 0)
            text += fmt::format("    {}\n",
                                oneLine(fmt::format("{}", fmt::join(reasons[line - 1], " "))));
        ++line;
    }
    return text;
}

std::string usageTable(const std::vector<Cut>& cuts, const Project& project) {
    TextTable table({{"Camera"},
                     {"Screen time", Align::right},
                     {"Share", Align::right},
                     {"Shots", Align::right}});
    for (const UsageRow& row : usageRows(cuts, project))
        table.add({row.camera, row.screenTime, row.share, row.shots});
    return table.text();
}

std::string plainText(const EditRevision& revision, const Project& project,
                      const std::vector<std::vector<std::string>>& reasons) {
    return fmt::format("{}\n\n{}\nActual camera usage\n{}",
                       oneLine(summaryLine(revision.cuts, revision.settings, project)),
                       cutTable(revision.cuts, project, reasons),
                       usageTable(revision.cuts, project));
}

void checkUsage(const GenerateOptions& options) {
    if (options.open && !options.output)
        throw UsageError("--open hands over what --output exports: give --output DIR as well.");
    if (options.keep && !options.from)
        throw UsageError("--keep keeps shots of an edit: give --from EDIT as well.");
    if (options.csv == standardInput && options.json)
        throw UsageError("--csv - and --json both print the edit: give one of them.");
    if (options.project == standardInput && options.from == standardInput)
        throw UsageError("Only one of PROJECT and EDIT can be \"-\", the standard input.");
}

/// What is printed of an edit. Writes the CSV file where one was asked for.
std::string printed(const EditRevision& revision, const KeptShots& kept, const Project& project,
                    const GenerateOptions& options, const CommandContext& context) {
    std::vector<std::vector<std::string>> reasons;
    if (options.csv || options.why)
        reasons = explainCuts(revision.settings, project, revision.cuts, kept);
    if (options.csv) {
        std::string csv = cutListCsv(revision.cuts, project, kept, reasons);
        if (*options.csv == standardOutput) return csv;
        writeNewFile(context.files, *options.csv, csv);
    }
    if (options.json) return loneRevisionText(revision, kept) + "\n";
    if (!options.why) reasons.clear();
    return plainText(revision, project, reasons) + (options.output ? "\n" : "");
}

/// Exports, after the CSV file: where that fails, the file stays and is named.
void exportBeside(const EditRevision& revision, const KeptShots& kept, const Project& project,
                  const GenerateOptions& options, const CommandContext& context,
                  CommandResult& result) {
    const bool hasFile = options.csv && options.csv != standardOutput;
    try {
        exportRevision(revision, kept, project, {*options.output, options.open}, context, result);
    } catch (const std::runtime_error& error) {
        result.failure = error.what(); // after the warnings
    }
    if (result.failure && hasFile) result.files = fmt::format("{}\n{}", *options.csv, result.files);
}

CommandResult run(const GenerateOptions& options, const CommandContext& context) {
    checkUsage(options);
    const std::unique_ptr<RandomSource> random = randomSource(options.seed);
    const Project project(importProjectArgument(options.project, context));
    EditArgument from = startingEdit(options, project, context);
    const std::vector<Cut> kept = options.keep ? cutsInRows(from.revision.cuts, *options.keep)
                                               : keptCuts(from.revision.cuts, from.kept);
    KeptShots keptShots;
    for (const Cut& cut : kept)
        keptShots.insert(cut.id);

    CommandResult result;
    result.notes = warningLines(preflight(project));
    const auto revision = generated(
        plannedSettings(std::move(from.revision.settings), options, project, context, result),
        project, kept, *random, result);
    if (!revision) return result;
    result.isData = options.json || options.csv == standardOutput;
    std::string output = printed(*revision, keptShots, project, options, context);
    if (options.output) exportBeside(*revision, keptShots, project, options, context, result);
    if (!result.failure) result.output = std::move(output);
    return result;
}

} // namespace

Verb addGenerate(CLI::App& program) {
    const auto options = std::make_shared<GenerateOptions>();
    CLI::App& verb = *program.add_subcommand("generate", "Make a rough edit");
    addProject(verb, options->project);
    addSettingsFlags(verb, options->flags);
    addText(verb, "--preset", options->preset, "Apply a preset saved in the panel", "NAME");
    addText(verb, "--settings", options->settingsFile,
            "A JSON object of settings, as in what --json prints; every key is optional", "FILE");
    addText(verb, "--from", options->from,
            "Start from an edit: what --json printed, or a CSV cut list; - reads it", "EDIT");
    addText(verb, "--keep", options->keep, "Keep these shots of it, as in 3,7-9", "ROWS");
    addText(verb, "--seed", options->seed, "Draw from this seed, to get the same shots again", "N");
    verb.add_flag("--json", options->json, "Print the edit as one JSON object");
    verb.add_flag("--why", options->why, "Say under each shot why it is there");
    addText(verb, "--csv", options->csv,
            "Also write the cut list as CSV, never over a file; - prints it instead", "FILE");
    addOutput(verb, options->output,
              "Also export: the FCPXML and its settings record, into this folder");
    addOpen(verb, options->open);
    verb.footer(footer);
    return {&verb, "PROJECT [OPTIONS]",
            [options](const CommandContext& context) { return run(*options, context); }};
}

} // namespace shotweaver
