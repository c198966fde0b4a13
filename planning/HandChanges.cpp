#include "planning/HandChanges.h"

#include "engine/FinalCutImportError.h"
#include "engine/generation/FixedParts.h"
#include "planning/EditPlan.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

using Kind = FixedPart::Kind;

/// The parts that settings fix; none where they make no sense, as those of an edit that came from
/// elsewhere may.
std::vector<FixedPart> partsOf(const EditSettings& settings, const Project& project) {
    try {
        const GenerationInputs inputs = generationInputs(settings, project);
        const BookendFrames bookends = checkBookends(project.engine, inputs);
        const auto sections = validateSections(project.engine, inputs.sections, bookends.opening,
                                               bookends.closingStart);
        return fixedParts(project.engine, bookends, inputs.opening, inputs.closing, sections, {});
    } catch (const FinalCutImportError&) {
        return {};
    }
}

bool isPlaceOf(const Cut& cut, const FixedPart& part) {
    return cut.angle == part.angle && cut.start == part.start &&
           cut.start + cut.duration == part.end;
}

std::string reason(Kind kind) {
    switch (kind) {
    case Kind::opening:
        return "The opening shot is changed under “Opening and closing shots”.";
    case Kind::closing:
        return "The closing shot is changed under “Opening and closing shots”.";
    default:
        return "A fixed section is changed under “Fixed camera sections”.";
    }
}

const FrameRange& footageOf(const Cut& cut, const CutEngine& engine) {
    static const FrameRange none;
    const FrameRange* const range =
        rangeContaining(engine.coverageOf(cut.angle), {cut.start, cut.start + cut.duration});
    return range ? *range : none;
}

} // namespace

std::optional<std::string> cameraIsFixed(const EditRevision& revision, std::size_t row,
                                         const Project& project) {
    for (const FixedPart& part : partsOf(revision.settings, project))
        if (isPlaceOf(revision.cuts[row], part)) return reason(part.kind);
    return std::nullopt;
}

std::optional<std::string> startIsFixed(const EditRevision& revision, std::size_t row,
                                        const Project& project) {
    if (row == 0) return "The first shot begins with the project.";
    if (auto fixed = cameraIsFixed(revision, row, project)) return fixed;
    return cameraIsFixed(revision, row - 1, project);
}

std::optional<std::string> missingFootage(const Cut& cut, const std::string& camera,
                                          const Project& project) {
    const CutEngine& engine = project.engine;
    const std::int64_t end = cut.start + cut.duration;
    std::vector<FrameRange> shown = engine.coveredParts(camera, cut.start, end);
    shown.push_back({0, cut.start}); // what is missing elsewhere does not matter
    const std::vector<FrameRange> missing = uncoveredRanges(std::move(shown), end);
    if (missing.empty()) return std::nullopt;
    return fmt::format("No footage from {} to {}", engine.timecode(missing.front().lowerBound),
                       engine.timecode(missing.front().upperBound));
}

std::int64_t possibleRoll(const std::vector<Cut>& cuts, std::size_t row, std::int64_t frames,
                          const CutEngine& engine) {
    const Cut& before = cuts[row - 1];
    const Cut& after = cuts[row];
    const std::int64_t earliest =
        std::max(before.start + 1, footageOf(after, engine).lowerBound) - after.start;
    const std::int64_t latest =
        std::min(after.start + after.duration - 1, footageOf(before, engine).upperBound) -
        after.start;
    return std::clamp(frames, std::min<std::int64_t>(earliest, 0),
                      std::max<std::int64_t>(latest, 0));
}

} // namespace shotweaver
