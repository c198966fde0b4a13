#include "cli/GenerateCommand.h"

#include "cli/ExportCommand.h"
#include "cli/Grammar.h"
#include "cli/PresetsCommand.h"
#include "cli/ProjectSource.h"
#include "cli/SettingsFlags.h"
#include "cli/TextTable.h"
#include "engine/EditRevision.h"
#include "engine/FinalCutImportError.h"
#include "persistence/RecordJson.h"
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

#include <limits>
#include <memory>

namespace shotweaver {

namespace {

struct GenerateOptions {
    std::string project;
    std::optional<std::string> preset; // name
    std::optional<std::string> settingsFile;
    SettingsFlags flags;
    std::optional<std::string> seed;
    std::optional<std::string> output; // folder
    bool open = false;                 // hand the export to Final Cut Pro
    bool json = false;
};

constexpr const char* footer =
    R"(
A is an angle: its identifier, or its name when no other angle has the same one.
Settings start as a fresh import leaves them: the first camera is the main camera, all
others are included, at 70 percent for the main camera. --preset comes next, then
--settings, then the other flags.

Examples:
  shotweaver generate "Sunday.fcpxml"
  shotweaver generate "Sunday.fcpxml" --main-camera Wide --main-share 60 --output out
  shotweaver generate "Sunday.fcpxml" --frequency Pulpit=8 --return-time Band=120
  shotweaver generate "Sunday.fcpxml" --opening Wide=20 --closing Wide=15
  shotweaver generate "Sunday.fcpxml" --section "Pulpit,01:05:30;00,01:07:10;00,Prayer"
  shotweaver generate "Sunday.fcpxml" --preset "Sunday sermon" --output out --open
  shotweaver generate "Sunday.fcpxml" --seed 7 --json > edit.json)";

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
        requireOrderedRanges(readSettingsOver(JsonReader(json), widestRanges()));
        return readSettingsOver(JsonReader(json), std::move(settings));
    } catch (const PlatformError& error) {
        throw UsageError(fmt::format("--settings: {}", error.what()));
    }
}

/// The settings of a fresh import, changed by the preset, the file and the flags. Notes what the
/// preset was matched to.
EditSettings plannedSettings(const GenerateOptions& options, const Project& project,
                             const CommandContext& context, CommandResult& result) {
    EditSettings settings = importedSettings(project, {});
    if (options.preset) {
        AppliedPreset applied =
            appliedPreset(presetNamed(*options.preset, context), std::move(settings), &project);
        settings = std::move(applied.settings);
        result.notes = oneLine(applied.notice) + "\n";
    }
    if (options.settingsFile)
        settings = withSettingsFile(std::move(settings), *options.settingsFile, context.files);
    settings = withFlags(std::move(settings), options.flags, project);
    requireOrderedRanges(settings);
    return settings;
}

/// An edit with these settings; nothing, with the result's failure, when none can be made.
std::optional<EditRevision> generated(EditSettings settings, const Project& project,
                                      const std::vector<Cut>& kept,
                                      RandomSource& random, CommandResult& result) {
    const UUIDMaker makeUUID = secureUUIDs();
    try {
        std::vector<Cut> cuts = generateCutList(settings, project, kept, random, makeUUID);
        return EditRevision{makeUUID(), secondsSince2001Now(), std::move(settings),
                            std::move(cuts)};
    } catch (const FinalCutImportError& error) {
        if (const auto warning =
                coverageWarning(coverageReport(settings, project, kept), settings, project, userLocale()))
            result.notes += fmt::format("warning: {}\n", oneLine(*warning));
        result.failure = error.what();
        return std::nullopt;
    }
}

std::string cutTable(const std::vector<Cut>& cuts, const Project& project) {
    const CutEngine& engine = project.engine;
    TextTable table({{"Start (Timecode)"}, {"Camera"}, {"Seconds", Align::right}});
    for (const Cut& cut : cuts)
        table.add({engine.timecode(cut.start), project.label(cut.angle),
                   fixedDecimal(engine.seconds(cut.duration), 2)});
    return table.text();
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

std::string plainText(const EditRevision& revision, const Project& project) {
    return fmt::format("{}\n\n{}\nActual camera usage\n{}",
                       oneLine(summaryLine(revision.cuts, revision.settings, project)),
                       cutTable(revision.cuts, project), usageTable(revision.cuts, project));
}

CommandResult run(const GenerateOptions& options, const CommandContext& context) {
    if (options.open && !options.output)
        throw UsageError("--open hands over what --output exports: give --output DIR as well.");
    const std::unique_ptr<RandomSource> random = randomSource(options.seed);
    const Project project(importProjectArgument(options.project, context));

    CommandResult result;
    const auto revision =
        generated(plannedSettings(options, project, context, result), project, {}, *random, result);
    if (!revision) return result;
    result.isJson = options.json;
    if (options.output)
        exportRevision(*revision, project, {*options.output, options.open}, context, result);
    if (result.failure) return result;
    result.output = options.json ? revisionText(*revision) + "\n" : plainText(*revision, project);
    if (options.output && !options.json) result.output += "\n";
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
    addText(verb, "--seed", options->seed, "Draw from this seed, to get the same shots again", "N");
    verb.add_flag("--json", options->json, "Print the edit as one JSON object");
    addOutput(verb, options->output,
              "Also export: the FCPXML and its settings record, into this folder");
    addOpen(verb, options->open);
    verb.footer(footer);
    return {&verb, "PROJECT [OPTIONS]",
            [options](const CommandContext& context) { return run(*options, context); }};
}

} // namespace shotweaver
