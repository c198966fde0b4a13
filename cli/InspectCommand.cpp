#include "cli/InspectCommand.h"

#include "cli/Grammar.h"
#include "cli/ProjectSource.h"
#include "cli/TextTable.h"
#include "cli/Warnings.h"
#include "engine/FinalCutImportError.h"
#include "engine/Project.h"
#include "engine/import/Preflight.h"
#include "planning/EditTexts.h"
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
void visitFields(const Markers& markers, Visit visit) {
    visit("cutPoints", static_cast<std::int64_t>(markers.cutPoints.size()));
    visit("named", static_cast<std::int64_t>(markers.notes.size()));
}

static bool hasSome(const Markers& markers) {
    return !markers.cutPoints.empty() || !markers.notes.empty();
}

/// What edits a project.
struct EngineReport {
    const CutEngine& engine;
    const Markers& markers;
};

template <class Visit>
void visitFields(const EngineReport& report, Visit visit) {
    const CutEngine& engine = report.engine;
    visit("frameNumerator", engine.frameDuration.numerator);
    visit("frameDenominator", engine.frameDuration.denominator);
    visit("length", engine.length);
    visit("sourceStart", engine.sourceStart);
    visit("timelineStart", engine.timelineStart);
    visit("audioID", engine.audioID);
    visit("coverage", engine.coverage);
    visit("audioCoverage", engine.audioCoverage);
    if (hasSome(report.markers)) visit("markers", report.markers);
}

template <class Visit>
void visitFields(const Finding& finding, Visit visit) {
    visit("kind", std::string(finding.kind == Finding::Kind::refused ? "refused" : "changed"));
    visit("text", finding.text);
}

/// All that is known of an export; without a project, why its engine was refused.
struct Report {
    const ImportedProject& summary;
    const Project* project;
    const std::optional<std::string>& refusal;
    const std::vector<Finding>& warnings;
};

template <class Visit>
void visitFields(const Report& report, Visit visit) {
    visit("project", report.summary);
    if (report.project)
        visit("engine", EngineReport{report.project->engine, report.project->markers});
    visit("refusal", report.refusal);
    if (!report.warnings.empty()) visit("warnings", report.warnings);
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
Warnings tell what Final Cut would refuse, or change, of an edit of this project.

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

std::string plainText(const ImportedProject& summary, const Project* project) {
    const CutEngine* const engine = project ? &project->engine : nullptr;
    std::string text = projectLine(summary) + "\n" + angleTable(summary, engine);
    if (engine)
        text += fmt::format("\nTimeline {} to {}\n", engine->timecode(0),
                            engine->timecode(engine->length));
    if (const auto markers = project ? markersText(project->markers) : std::nullopt)
        text += fmt::format("\n{}\n", *markers);
    if (!summary.missingLocations.empty())
        text +=
            "\n" + oneLine("No media location: " + joined(summary.missingLocations, ", ")) + "\n";
    return text;
}

CommandResult run(const InspectOptions& options, const CommandContext& context) {
    ProjectImport intake = importProjectArgument(options.project, context);
    const ImportedProject summary = intake.summary;

    CommandResult result;
    std::optional<Project> project;
    std::vector<Finding> findings;
    try {
        project.emplace(std::move(intake));
        findings = preflight(*project);
        result.notes = warningLines(findings);
    } catch (const FinalCutImportError& error) {
        result.failure = error.what();
    }

    const Project* const accepted = project ? &*project : nullptr;
    if (options.json) {
        shotweaver::encode(result.output, Report{summary, accepted, result.failure, findings});
        result.output += '\n';
    } else {
        result.output = plainText(summary, accepted);
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
