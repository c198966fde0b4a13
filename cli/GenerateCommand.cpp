#include "cli/GenerateCommand.h"

#include "cli/ExportCommand.h"
#include "cli/PresetsCommand.h"
#include "cli/ProjectSource.h"
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

#include <fmt/format.h>

#include <limits>
#include <memory>

namespace shotweaver {

namespace {

std::unique_ptr<RandomSource> randomSource(const std::optional<std::string>& seed) {
    if (!seed) return std::make_unique<SecureRandom>();
    const auto number = parseUnsigned(*seed);
    if (!number)
        throw UsageError(
            fmt::format("--seed: \"{}\" is not a whole number of at most 64 bits.", *seed));
    return std::make_unique<SeededRandom>(*number);
}

/// Settings whose ranges no given bound can reverse.
EditSettings widestRanges() {
    EditSettings settings;
    settings.mainMinimum = settings.otherMinimum = std::numeric_limits<double>::lowest();
    settings.mainMaximum = settings.otherMaximum = std::numeric_limits<double>::max();
    return settings;
}

EditSettings withSettingsFile(EditSettings settings, const std::string& path) {
    const std::string text = readFile(systemFileCalls(), path);
    try {
        const Json json = parseJson(text);
        // On its own first: flags do not put right what the file has wrong.
        requireOrderedRanges(readSettingsOver(JsonReader(json), widestRanges()));
        settings = readSettingsOver(JsonReader(json), std::move(settings));
    } catch (const PlatformError& error) {
        throw UsageError(fmt::format("--settings: {}", error.what()));
    }
    return settings;
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

} // namespace

CommandResult runGenerate(const GenerateOptions& options, ByteSource& in,
                          const Environment& environment, Workspace& workspace) {
    if (options.open && !options.output)
        throw UsageError("--open hands over what --output exports: give --output DIR as well.");
    const std::unique_ptr<RandomSource> random = randomSource(options.seed);
    const Project project(importProjectArgument(options.project, in));

    EditSettings settings = importedSettings(project, {});
    CommandResult result;
    if (options.preset) {
        AppliedPreset applied =
            appliedPreset(presetNamed(*options.preset, environment), std::move(settings), &project);
        settings = std::move(applied.settings);
        result.notes = oneLine(applied.notice) + "\n";
    }
    if (options.settingsFile)
        settings = withSettingsFile(std::move(settings), *options.settingsFile);
    settings = withFlags(std::move(settings), options.flags, project);
    requireOrderedRanges(settings);

    const UUIDMaker makeUUID = secureUUIDs();
    std::vector<Cut> cuts;
    try {
        cuts = generateCutList(settings, project, *random, makeUUID);
    } catch (const FinalCutImportError& error) {
        if (const auto warning =
                coverageWarning(coverageReport(settings, project), settings, project, userLocale()))
            result.notes += fmt::format("warning: {}\n", oneLine(*warning));
        result.failure = error.what();
        return result;
    }
    const EditRevision revision{makeUUID(), secondsSince2001Now(), std::move(settings),
                                std::move(cuts)};

    result.isJson = options.json;
    if (options.output)
        exportRevision(revision, project, {*options.output, options.open}, workspace, result);
    if (result.failure) return result;
    result.output = options.json ? revisionText(revision) + "\n" : plainText(revision, project);
    if (options.output && !options.json) result.output += "\n";
    return result;
}

} // namespace shotweaver
