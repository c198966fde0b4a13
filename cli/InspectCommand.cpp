#include "cli/InspectCommand.h"

#include "cli/Grammar.h"
#include "cli/ProjectSource.h"
#include "cli/TextTable.h"
#include "engine/CutEngine.h"
#include "engine/FinalCutImportError.h"
#include "engine/export/ExportObstacles.h"
#include "platform/NumberText.h"
#include "platform/RecordCoding.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <memory>
#include <optional>

namespace shotweaver {

/// A number as it is reported: null when it is not finite.
struct Reported {
    double value;
};

static void encode(std::string& json, Reported number) {
    json += jsonNumber(number.value);
}

static void encode(std::string& json, const FrameRange& range) {
    json += fmt::format("[{},{}]", range.lowerBound, range.upperBound);
}

template <class Visit>
void visitFields(const ImportedAngle& angle, Visit visit) {
    visit("id", angle.id);
    visit("name", angle.name);
    visit("cameras", angle.cameras);
    visit("clipCount", angle.clipCount);
    visit("gapCount", angle.gapCount);
    if (angle.firstRecording) visit("firstRecording", Reported{*angle.firstRecording});
}

template <class Visit>
void visitFields(const ImportedProject& project, Visit visit) {
    visit("name", project.name);
    visit("version", project.version);
    visit("duration", Reported{project.duration});
    visit("framesPerSecond", Reported{project.framesPerSecond});
    visit("audioAngles", project.audioAngles);
    visit("missingLocations", project.missingLocations);
    visit("angles", project.angles);
}

template <class Visit>
void visitFields(const CutEngine& engine, Visit visit) {
    visit("frameNumerator", engine.frameDuration.numerator);
    visit("frameDenominator", engine.frameDuration.denominator);
    visit("length", engine.length);
    visit("sourceStart", engine.sourceStart);
    visit("timelineStart", engine.timelineStart);
    visit("audioID", engine.audioID);
    visit("coverage", engine.coverage);
    visit("audioCoverage", engine.audioCoverage);
}

/// All that is known of a project; without an engine, why it was refused.
struct Report {
    const ImportedProject& project;
    const CutEngine* engine;
    const std::optional<std::string>& refusal;
};

template <class Visit>
void visitFields(const Report& report, Visit visit) {
    visit("project", report.project);
    if (report.engine) visit("engine", *report.engine);
    visit("refusal", report.refusal);
}

namespace {

struct InspectOptions {
    std::string project;
    bool json = false;
};

constexpr const char* footer =
    R"(
Each angle is a row: its identifier (which every flag of generate takes), its name and
cameras, and where it has picture and sound: "█" throughout, "▒" partly, "·" not at all.
Warnings tell what would stop an export later.

Examples:
  shotweaver inspect "Sunday.fcpxml"
  shotweaver inspect "Sunday.fcpxmld" --json)";

constexpr std::size_t barCharacters = 30;

std::string projectLine(const ImportedProject& project) {
    return oneLine(fmt::format("{} · {} seconds · {} fps · FCPXML {} · Audio: {}", project.name,
                               fixedDecimal(project.duration, 2),
                               fixedDecimal(project.framesPerSecond, 2), project.version,
                               project.audioAngles)) +
           "\n";
}

std::string angleTable(const ImportedProject& project, const CutEngine* engine) {
    std::vector<TextTable::Column> columns{{"Angle"},
                                           {"Name"},
                                           {"Cameras"},
                                           {"Clips", Align::right},
                                           {"Gaps", Align::right},
                                           {"First at", Align::right}};
    if (engine) {
        columns.push_back({"Picture"});
        columns.push_back({"Sound"});
    }
    TextTable table(std::move(columns));
    for (const ImportedAngle& angle : project.angles) {
        std::vector<std::string> row{
            angle.id,
            angle.name,
            angle.cameras,
            std::to_string(angle.clipCount),
            std::to_string(angle.gapCount),
            angle.firstRecording ? fixedDecimal(*angle.firstRecording, 2) + " s" : "–"};
        if (engine) {
            for (const CoverageMap* map : {&engine->coverage, &engine->audioCoverage})
                row.push_back(coverageBar(map->at(angle.id), engine->length, barCharacters));
        }
        table.add(std::move(row));
    }
    return table.text();
}

std::string plainText(const ImportedProject& project, const CutEngine* engine) {
    std::string text = projectLine(project) + "\n" + angleTable(project, engine);
    if (engine)
        text += fmt::format("\nTimeline {} to {}\n", engine->timecode(0),
                            engine->timecode(engine->length));
    if (!project.missingLocations.empty())
        text +=
            "\n" + oneLine("No media location: " + joined(project.missingLocations, ", ")) + "\n";
    return text;
}

CommandResult run(const InspectOptions& options, const CommandContext& context) {
    ProjectImport intake = importProjectArgument(options.project, context);
    const ImportedProject project = intake.summary;

    CommandResult result;
    std::optional<CutEngine> engine;
    try {
        engine.emplace(std::move(intake));
        for (const std::string& obstacle : exportObstacles(*engine))
            result.notes += fmt::format("warning: {}\n", oneLine(obstacle));
    } catch (const FinalCutImportError& error) {
        result.failure = error.what();
    }

    const CutEngine* const accepted = engine ? &*engine : nullptr;
    if (options.json) {
        shotweaver::encode(result.output, Report{project, accepted, result.failure});
        result.output += '\n';
    } else {
        result.output = plainText(project, accepted);
    }
    return result;
}

} // namespace

Verb addInspect(CLI::App& program) {
    const auto options = std::make_shared<InspectOptions>();
    CLI::App& verb = *program.add_subcommand("inspect", "Show what a project holds");
    addProject(verb, options->project);
    verb.add_flag("--json", options->json, "Print one JSON object");
    verb.footer(footer);
    return {&verb, "PROJECT [OPTIONS]",
            [options](const CommandContext& context) { return run(*options, context); }};
}

} // namespace shotweaver
