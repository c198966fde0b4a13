#include "fuzz/EngineChecks.h"

#include "engine/generation/EditChecks.h"
#include "fuzz/Check.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>

namespace shotweaver::fuzz {

namespace {

void checkCoverage(const CoverageMap& map, const std::set<std::string>& angles,
                   std::int64_t length) {
    require(map.size() == angles.size(), "every angle has coverage, and nothing else");
    for (const auto& [angle, coverage] : map) {
        require(angles.count(angle) == 1, "coverage is that of an angle", angle);
        std::int64_t previousEnd = -1;
        for (const FrameRange& range : coverage) {
            require(range.lowerBound > previousEnd && range.upperBound > range.lowerBound,
                    "coverage is sorted and neither overlaps nor touches", angle);
            require(range.lowerBound >= 0 && range.upperBound <= length,
                    "coverage lies inside of the project", angle);
            previousEnd = range.upperBound;
        }
    }
}

/// The cuts by place: true where the edit's own rules laid the shot, not chance. A note's shot, of
/// those here the only one without an end of its own, is as long as chance says.
std::vector<bool> fixedCuts(const CutEngine& engine, const GenerationInputs& inputs,
                            const std::vector<Cut>& cuts) {
    std::map<std::int64_t, FixedCameraSection> fixed; // by start
    for (const FixedCameraSection& section : inputs.sections)
        fixed[section.start] = section;
    for (const Cut& cut : inputs.kept)
        fixed[cut.start] = {cut.angle, cut.start, cut.start + cut.duration};
    const std::int64_t opening = bookendFrames(engine, inputs.opening);
    const std::int64_t closing = engine.length - bookendFrames(engine, inputs.closing);
    if (inputs.opening) fixed[0] = {inputs.opening->angle, 0, opening};
    if (inputs.closing) fixed[closing] = {inputs.closing->angle, closing, engine.length};

    for (const CameraNote& note : inputs.notes) {
        const auto next = fixed.upper_bound(note.frame);
        const bool isInside = next != fixed.begin() && note.frame < std::prev(next)->second.end;
        if (!isInside) fixed[note.frame] = {note.angle, note.frame, note.frame};
    }

    std::vector<bool> isFixed;
    std::size_t found = 0;
    for (const Cut& cut : cuts) {
        const auto at = fixed.find(cut.start);
        isFixed.push_back(at != fixed.end());
        if (at == fixed.end()) continue;
        ++found;
        const auto& [angle, start, end] = at->second;
        require(cut.angle == angle && (start == end || cut.start + cut.duration == end),
                "a fixed shot is laid as asked for", cut.angle);
    }
    require(found == fixed.size(), "every fixed shot is laid");
    return isFixed;
}

void checkChains(const CutEngine& engine, const std::vector<Cut>& cuts) {
    std::int64_t position = 0;
    std::set<std::array<std::uint8_t, 16>> ids;
    for (const Cut& cut : cuts) {
        require(ids.insert(cut.id.bytes).second, "no two cuts share an identifier");
        require(cut.start == position && cut.duration >= 1, "cuts follow each other without gaps");
        position += cut.duration;
        require(position <= engine.length, "no cut ends after the project");
        const std::vector<FrameRange> whole{{cut.start, position}};
        require(engine.coveredParts(cut.angle, cut.start, position) == whole,
                "a cut lies in its camera's footage", cut.angle);
    }
    require(position == engine.length, "the cuts end with the project");
}

} // namespace

void checkEngine(const CutEngine& engine, const ImportedProject& summary) {
    constexpr std::int64_t maximumTerm = 1'000'000;
    const FrameDuration& frame = engine.frameDuration;
    require(frame.numerator >= 1 && frame.numerator <= maximumTerm && frame.denominator >= 1 &&
                frame.denominator <= maximumTerm,
            "frame terms are in range");
    require(engine.length >= 1, "a project has a frame");
    std::set<std::string> angles;
    for (const ImportedAngle& angle : summary.angles)
        angles.insert(angle.id);
    require(angles.size() == summary.angles.size() && angles.size() >= 2,
            "angles are two or more, each with an identifier of its own");
    checkCoverage(engine.coverage, angles, engine.length);
    checkCoverage(engine.audioCoverage, angles, engine.length);
}

void checkGeneratedCuts(const CutEngine& engine, const GenerationInputs& inputs,
                        const std::vector<Cut>& cuts) {
    checkChains(engine, cuts);
    for (const Cut& kept : inputs.kept)
        require(std::find(cuts.begin(), cuts.end(), kept) != cuts.end(), "a kept shot stays");
    const std::vector<bool> isFixed = fixedCuts(engine, inputs, cuts);
    std::set<std::string> selected(inputs.otherCameras.begin(), inputs.otherCameras.end());
    selected.insert(inputs.mainCamera);

    std::map<std::string, std::int64_t> lastEnd;
    for (std::size_t i = 0; i < cuts.size(); ++i) {
        const Cut& cut = cuts[i];
        const bool holds = i > 0 && cuts[i - 1].angle == cut.angle;
        if (!isFixed[i]) {
            require(selected.count(cut.angle) == 1, "chance takes selected cameras", cut.angle);
            require(!holds || isFixed[i - 1], "shots of one camera merge", cut.angle);
            const double wait = numberFor(inputs.returnTimes, cut.angle, defaultReturnTime);
            const double frames = engine.frameDuration.frames(wait);
            const auto last = lastEnd.find(cut.angle);
            require(holds || last == lastEnd.end() ||
                        static_cast<double>(cut.start - last->second) >= std::ceil(frames),
                    "no camera is back before its return time", cut.angle);
        }
        lastEnd[cut.angle] = cut.start + cut.duration;
    }
}

} // namespace shotweaver::fuzz
