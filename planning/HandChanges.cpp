#include "planning/HandChanges.h"

#include "planning/EditPlan.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

using Kind = FixedPart::Kind;

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
    for (const FixedPart& part : plannedParts(revision.settings, project))
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
