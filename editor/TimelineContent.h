#pragma once

#include "engine/EditRevision.h"
#include "engine/FrameRange.h"
#include "engine/Project.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace shotweaver {

/// One camera's cuts in the timeline of an edit.
struct CutLane {
    std::string camera;
    std::vector<FrameRange> ranges; // in the cut list's order
    std::vector<std::size_t> rows;  // of these ranges in the cut list
    Coverage gaps = {};             // where it recorded nothing

    bool operator==(const CutLane&) const = default;
};

/// One lane for each video angle, in angle order, also for those that the cuts never show.
std::vector<CutLane> cutLanes(const std::vector<Cut>& cuts, const Project& project);

/// A mark over the lanes.
struct TimelineMark {
    enum class Kind { fixedPart, gap, cutPoint, note, chapter };

    Kind kind;
    FrameRange range; // a frame for those without a length
    std::string text; // what it is and where: "Fixed section “Sermon” · 01:00:10:00 to 01:20:00:00"

    bool operator==(const TimelineMark&) const = default;
};

/// The opening and closing shot and the fixed sections of an edit, `gaps` (of its planned
/// coverage), the cut points and followed markers that it uses, and the project's chapters. Those
/// of a kind together, by place.
std::vector<TimelineMark> timelineMarks(const EditRevision& edit, const Project& project,
                                        const Coverage& gaps);

/// A label of the ruler.
struct RulerLabel {
    std::int64_t frame;
    std::string text; // timecode

    bool operator==(const RulerLabel&) const = default;
};

/// Labels at round timecodes of the project in a range of it, at least so many frames apart (at
/// least 1). Where drop-frame timecode skips a round label, the next one stands there.
std::vector<RulerLabel> rulerLabels(const FrameRange& shown, std::int64_t distance,
                                    const CutEngine& engine);

/// What a gap of a lane tells: "Pulpit has no footage · 01:00:20:00 to 01:00:24:00".
std::string laneGapText(const CutLane& lane, const FrameRange& gap, const CutEngine& engine);

/// The edit in a line: "3 cameras, 182 cuts".
std::string timelineSummary(const std::vector<CutLane>& lanes, std::size_t cuts);

} // namespace shotweaver
