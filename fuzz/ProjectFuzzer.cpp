// Projects as an editor could have made them, and edits of them: every cut list keeps its rules,
// and every export holds what the import held.

#include "engine/Project.h"
#include "engine/export/ExportDocument.h"
#include "engine/generation/CutGeneration.h"
#include "engine/import/Preflight.h"
#include "fuzz/Check.h"
#include "fuzz/EngineChecks.h"
#include "fuzz/ExportChecks.h"
#include "fuzz/FuzzedProject.h"

namespace shotweaver::fuzz {

namespace {

UUIDMaker seededUUIDs(std::uint64_t seed) {
    return [random = SeededRandom(seed)]() mutable { return UUID::random(random); };
}

/// Whether an export of these cuts is refused is the export's own matter: fades and annotations
/// have rules that the engine does not check.
void checkExportOf(const CutEngine& engine, const std::vector<Cut>& cuts,
                   const std::string& audio) {
    std::string exported;
    const auto refusal =
        refusalOf([&] { exported = exportDocument(engine, cuts, audio, seededUUIDs(1)); });
    if (!refusal) checkExport(engine, cuts, audio, exported);
}

/// Another edit around some shots of one.
void checkShuffle(const CutEngine& engine, GenerationInputs inputs, const std::vector<Cut>& cuts,
                  std::uint64_t seed) {
    inputs.kept.clear();
    for (std::size_t i = seed % 3; i < cuts.size(); i += 3)
        inputs.kept.push_back(cuts[i]);
    SeededRandom random(seed + 1);
    std::vector<Cut> shuffled;
    const auto refusal =
        refusalOf([&] { shuffled = generateCuts(engine, inputs, random, seededUUIDs(seed + 1)); });
    if (!refusal) checkGeneratedCuts(engine, inputs, shuffled);
}

void checkGeneration(const CutEngine& engine, const GenerationInputs& inputs, std::uint64_t seed,
                     const std::string& audio) {
    std::vector<Cut> cuts;
    const auto generate = [&](std::vector<Cut>& into) {
        SeededRandom random(seed);
        into = generateCuts(engine, inputs, random, seededUUIDs(seed));
    };
    const auto refusal = refusalOf([&] { generate(cuts); });
    std::vector<Cut> again;
    require(refusalOf([&] { generate(again); }) == refusal && again == cuts,
            "a seed gives the same edit again");
    if (refusal) return;
    checkGeneratedCuts(engine, inputs, cuts);
    checkShuffle(engine, inputs, cuts, seed);
    checkExportOf(engine, cuts, audio);
}

/// Two cuts where the camera allows it, so that exports are looked at that generation never makes.
void checkHalves(const CutEngine& engine, const std::string& camera, std::int64_t at) {
    std::vector<Cut> cuts{{UUID{}, camera, 0, engine.length}};
    if (at > 0 && at < engine.length)
        cuts = {{UUID{}, camera, 0, at}, {UUID{}, camera, at, engine.length - at}};
    checkExportOf(engine, cuts, "A");
}

void checkMarkers(const Markers& markers, const Project& project) {
    std::int64_t previous = 0;
    for (const std::int64_t point : markers.cutPoints) {
        require(point > previous && point < project.engine.length,
                "cut points are inside, in order and distinct");
        previous = point;
    }
    previous = 0;
    for (const CameraNote& note : markers.notes) {
        require(note.frame >= previous && note.frame < project.engine.length,
                "notes are inside and in order");
        require(project.isVideoAngle(note.angle), "a note asks for a camera", note.name);
        previous = note.frame;
    }
}

void checkProject(FuzzedDataProvider& bytes) {
    const auto seed = bytes.ConsumeIntegral<std::uint64_t>();
    FuzzedProject project(bytes);
    const std::string document = project.document();
    ImportedProject summary;
    std::optional<Project> loaded;
    const auto summaryRefusal = refusalOf([&] { summary = inspectProject(document); });
    const auto engineRefusal = refusalOf([&] { loaded.emplace(document); });
    require(!summaryRefusal || engineRefusal == summaryRefusal,
            "the engine refuses what the import refuses");
    if (!loaded) return;
    const CutEngine& engine = loaded->engine;
    checkEngine(engine, summary);
    checkMarkers(loaded->markers, *loaded);
    preflight(*loaded);
    checkHalves(engine, "A", bytes.ConsumeIntegralInRange<std::int64_t>(0, engine.length));
    const bool ownAudio = bytes.ConsumeIntegralInRange(0, 7) < 7;
    checkGeneration(engine, project.inputs(engine.coverage), seed,
                    ownAudio ? "A" : project.angles().back());
}

} // namespace

} // namespace shotweaver::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider bytes(data, size);
    shotweaver::fuzz::checkProject(bytes);
    return 0;
}
