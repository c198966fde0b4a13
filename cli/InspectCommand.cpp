#include "cli/InspectCommand.h"

#include "cli/ProjectSource.h"
#include "cli/TextTable.h"
#include "engine/CutEngine.h"
#include "engine/FinalCutImportError.h"
#include "platform/JsonReader.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <optional>

namespace shotweaver {

namespace {

constexpr std::size_t barCharacters = 30;

OrderedJson angleJson(const ImportedAngle& angle) {
    OrderedJson json{{"id", angle.id},
                     {"name", angle.name},
                     {"cameras", angle.cameras},
                     {"clipCount", angle.clipCount},
                     {"gapCount", angle.gapCount}};
    if (angle.firstRecording) json["firstRecording"] = *angle.firstRecording;
    return json;
}

OrderedJson projectJson(const ImportedProject& project) {
    OrderedJson angles = OrderedJson::array();
    for (const ImportedAngle& angle : project.angles)
        angles.push_back(angleJson(angle));
    return {{"name", project.name},
            {"version", project.version},
            {"duration", project.duration},
            {"framesPerSecond", project.framesPerSecond},
            {"audioAngles", project.audioAngles},
            {"missingLocations", project.missingLocations},
            {"angles", std::move(angles)}};
}

OrderedJson coverageJson(const CoverageMap& coverage) {
    OrderedJson::object_t json;
    for (const auto& [angle, ranges] : coverage) {
        OrderedJson pairs = OrderedJson::array();
        for (const FrameRange& range : ranges)
            pairs.push_back({range.lowerBound, range.upperBound});
        json.OrderedJson::object_t::Container::emplace_back(angle, std::move(pairs));
    }
    return json;
}

OrderedJson engineJson(const CutEngine& engine) {
    return {{"frameNumerator", engine.frameNumerator},
            {"frameDenominator", engine.frameDenominator},
            {"length", engine.length},
            {"sourceStart", engine.sourceStart},
            {"timelineStart", engine.timelineStart},
            {"audioID", engine.audioID},
            {"coverage", coverageJson(engine.coverage)},
            {"audioCoverage", coverageJson(engine.audioCoverage)}};
}

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

} // namespace

CommandResult runInspect(const InspectOptions& options, ByteSource& in) {
    ProjectImport import = importProjectArgument(options.project, in);
    const ImportedProject project = import.summary;

    CommandResult result;
    std::optional<CutEngine> engine;
    try {
        engine.emplace(std::move(import));
        for (const std::string& obstacle : engine->exportObstacles())
            result.notes += fmt::format("warning: {}\n", oneLine(obstacle));
    } catch (const FinalCutImportError& error) {
        result.failure = error.what();
    }

    if (!options.json) {
        result.output = plainText(project, engine ? &*engine : nullptr);
        return result;
    }
    OrderedJson json{{"project", projectJson(project)}};
    if (engine) json["engine"] = engineJson(*engine);
    if (result.failure) json["refusal"] = *result.failure;
    result.output = json.dump() + "\n";
    return result;
}

} // namespace shotweaver
