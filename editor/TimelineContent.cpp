#include "editor/TimelineContent.h"

#include "editor/CoverageContent.h"
#include "editor/CutListContent.h"
#include "engine/FinalCutImportError.h"
#include "planning/CutPoints.h"
#include "planning/EditPlan.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace shotweaver {

namespace {

using Kind = TimelineMark::Kind;

/// The name of the section that begins at a frame; empty without one.
std::string sectionName(std::int64_t start, const EditSettings& settings, const CutEngine& engine) {
    for (const SectionDraft& section : settings.sections) {
        try {
            if (engine.frameForTimecode(section.start) == start) return section.name;
        } catch (const FinalCutImportError&) {
            continue; // which cannot be that of a part
        }
    }
    return "";
}

std::optional<std::string> titleOf(const FixedPart& part, const EditSettings& settings,
                                   const CutEngine& engine) {
    switch (part.kind) {
    case FixedPart::Kind::opening:
        return "Opening shot";
    case FixedPart::Kind::closing:
        return "Closing shot";
    case FixedPart::Kind::section: {
        const std::string name = sectionName(part.start, settings, engine);
        return name.empty() ? "Fixed section" : fmt::format("Fixed section “{}”", name);
    }
    default:
        return std::nullopt;
    }
}

void addFixedParts(std::vector<TimelineMark>& marks, const EditSettings& settings,
                   const Project& project) {
    for (const FixedPart& part : plannedParts(settings, project)) {
        const auto title = titleOf(part, settings, project.engine);
        const FrameRange range{part.start, part.end};
        if (title)
            marks.push_back({Kind::fixedPart, range,
                             fmt::format("{} · {}", *title, rangeText(range, project.engine))});
    }
}

/// The steps between labels, seconds.
constexpr std::int64_t steps[] = {1,   2,   5,   10,   15,   30,   60,   120,
                                  300, 600, 900, 1800, 3600, 7200, 14400};

/// The smallest step of at least `distance`, in labels: some frames, or so many seconds.
std::int64_t stepFor(std::int64_t distance, std::int64_t rate) {
    for (const std::int64_t frames : {1, 2, 5, 10})
        if (frames >= distance && frames < rate) return frames;
    for (const std::int64_t seconds : steps)
        if (seconds * rate >= distance) return seconds * rate;
    const std::int64_t longest = steps[std::size(steps) - 1] * rate;
    return (distance / longest + 1) * longest;
}

} // namespace

std::vector<CutLane> cutLanes(const std::vector<Cut>& cuts, const Project& project) {
    std::vector<CutLane> lanes;
    std::unordered_map<std::string_view, std::size_t> laneByAngle;
    for (const ImportedAngle& angle : project.videoAngles) {
        laneByAngle.emplace(angle.id, lanes.size());
        lanes.push_back(
            {project.label(angle.id),
             {},
             {},
             uncoveredRanges(project.engine.coverageOf(angle.id), project.engine.length)});
    }
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        const Cut& cut = cuts[row];
        const auto found = laneByAngle.find(cut.angle);
        if (found == laneByAngle.end()) continue;
        CutLane& lane = lanes[found->second];
        lane.ranges.push_back({cut.start, cut.start + cut.duration});
        lane.rows.push_back(row);
    }
    return lanes;
}

std::vector<TimelineMark> timelineMarks(const EditRevision& edit, const Project& project,
                                        const Coverage& gaps) {
    const CutEngine& engine = project.engine;
    std::vector<TimelineMark> marks;
    addFixedParts(marks, edit.settings, project);
    for (const FrameRange& gap : gaps)
        marks.push_back({Kind::gap, gap, gapText(gap, project)});
    for (const std::int64_t frame : cutPoints(edit.settings, project))
        marks.push_back({Kind::cutPoint, {frame, frame + 1}, ""});
    if (edit.settings.followMarkers)
        for (const CameraNote& note : project.markers.notes)
            marks.push_back({Kind::note, {note.frame, note.frame + 1}, noteLine(note, project)});
    for (const auto& [frame, name] : project.markers.chapters)
        marks.push_back({Kind::chapter,
                         {frame, frame + 1},
                         fmt::format("Chapter “{}” · {}", name, engine.timecode(frame))});
    return marks;
}

std::vector<RulerLabel> rulerLabels(const FrameRange& shown, std::int64_t distance,
                                    const CutEngine& engine) {
    const std::int64_t step = stepFor(distance, engine.frameDuration.nominalRate());
    std::vector<RulerLabel> labels;
    // A label counts those that are skipped, so it is never less than its frame.
    std::int64_t label = std::max<std::int64_t>(0, shown.lowerBound + engine.timelineStart);
    label -= label % step;
    for (;; label += step) {
        const std::int64_t frame = engine.firstFrameLabelled(label);
        if (frame >= shown.upperBound) return labels;
        if (frame >= shown.lowerBound) labels.push_back({frame, engine.timecode(frame)});
    }
}

std::string laneGapText(const CutLane& lane, const FrameRange& gap, const CutEngine& engine) {
    return fmt::format("{} has no footage · {}", lane.camera, rangeText(gap, engine));
}

std::string timelineSummary(const std::vector<CutLane>& lanes, std::size_t cuts) {
    return fmt::format("{} cameras, {} {}", lanes.size(), cuts, cuts == 1 ? "cut" : "cuts");
}

} // namespace shotweaver
