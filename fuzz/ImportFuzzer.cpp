// Any bytes as a project: the import and the engine take them or refuse them with a sentence, and
// what they take keeps their promises.

#include "engine/CutEngine.h"
#include "engine/export/ExportDocument.h"
#include "engine/import/Preflight.h"
#include "fuzz/Check.h"
#include "fuzz/EngineChecks.h"
#include "fuzz/ExportChecks.h"

namespace shotweaver::fuzz {

namespace {

void checkSummary(const ImportedProject& summary) {
    require(summary.duration > 0 && summary.framesPerSecond > 0, "a project has time");
    for (const ImportedAngle& angle : summary.angles)
        require(isUTF8(angle.id) && isUTF8(angle.name) && isUTF8(angle.cameras) &&
                    angle.clipCount >= 0 && angle.gapCount >= 0,
                "an angle is described in text", angle.id);
    require(isUTF8(summary.name) && isUTF8(summary.version) && isUTF8(summary.audioAngles),
            "a project is described in text");
}

/// The shortest edit, one cut, where a camera and a sound allow it.
void checkOneCut(const CutEngine& engine) {
    SeededRandom random(1);
    const UUIDMaker makeUUID = [&random] { return UUID::random(random); };
    const Coverage whole{{0, engine.length}};
    for (const auto& [angle, coverage] : engine.coverage) {
        const auto& sound = engine.audioCoverage.find(angle)->second;
        if (coverage != whole || sound != whole) continue;
        const std::vector<Cut> cuts{{UUID{}, angle, 0, engine.length}};
        std::string exported;
        const auto refusal = refusalOf(
            [&, &each = angle] { exported = exportDocument(engine, cuts, each, makeUUID); });
        if (!refusal) checkExport(engine, cuts, angle, exported);
    }
}

void checkImport(std::string_view bytes) {
    ImportedProject summary;
    std::optional<Project> project;
    const auto summaryRefusal = refusalOf([&] { summary = inspectProject(bytes); });
    const auto engineRefusal = refusalOf([&] { project.emplace(bytes); });
    require(!summaryRefusal || engineRefusal == summaryRefusal,
            "the engine refuses what the import refuses");
    if (!summaryRefusal) checkSummary(summary);
    if (!project) return;
    checkEngine(project->engine, summary);
    for (const Finding& finding : preflight(*project))
        require(isUTF8(finding.text) && !finding.text.empty(), "a finding is a text", finding.text);
    checkOneCut(project->engine);
}

} // namespace

} // namespace shotweaver::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    shotweaver::fuzz::checkImport(shotweaver::fuzz::textOf(data, size));
    return 0;
}
