#include "engine/generation/EditChecks.h"

#include "engine/FinalCutImportError.h"
#include "engine/SettingLimits.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <set>

namespace shotweaver {

namespace {

[[noreturn]] void refuse(const std::string& sentence) {
    throw FinalCutImportError::invalid(sentence);
}

constexpr Limits mainFraction{limits::mainShare.least / 100, limits::mainShare.most / 100};

constexpr const char* chooseCameras =
    "Choose a main camera and at least one additional video angle.";

void checkBookendFootage(const Coverage& footage, const FrameRange& shot, const char* which) {
    if (!rangeContaining(footage, shot))
        refuse(fmt::format("The chosen {} camera does not have footage for the whole requested "
                           "shot. Choose another camera or shorten the shot.",
                           which));
}

void checkShotRange(const std::optional<SecondsRange>& range) {
    // Each bound within both limits, so that a reversed range of any size ends here or holds no
    // frame.
    if (range &&
        !(limits::shotSeconds.contains(range->lower) && limits::shotSeconds.contains(range->upper)))
        refuse("Shot lengths must be between 1 and 120 seconds.");
}

} // namespace

void checkAudioCoverage(const CutEngine& engine, std::string_view audio) {
    const auto found = engine.audioCoverage.find(audio);
    if (found == engine.audioCoverage.end() || found->second != Coverage{{0, engine.length}})
        refuse("This audio angle does not cover the whole project. Choose a continuous audio "
               "angle.");
}

std::int64_t bookendFrames(const CutEngine& engine, const std::optional<BookendShot>& shot) {
    if (!shot) return 0;
    if (!limits::shotSeconds.contains(shot->seconds))
        refuse("Opening and closing lengths must be between 1 and 120 seconds.");
    const double frames = engine.frameDuration.frames(shot->seconds);
    return std::max<std::int64_t>(std::llround(frames), 1);
}

std::vector<FixedCameraSection> validateSections(const CutEngine& engine,
                                                 std::vector<FixedCameraSection> sections,
                                                 std::int64_t openingFrames,
                                                 std::int64_t closingStart) {
    std::stable_sort(sections.begin(), sections.end(),
                     [](const auto& a, const auto& b) { return a.start < b.start; });
    std::int64_t previousEnd = openingFrames;
    for (const FixedCameraSection& section : sections) {
        if (section.start < openingFrames || section.end > closingStart ||
            section.start >= section.end)
            refuse("Fixed sections must have an end after their start, stay inside the project, "
                   "and not overlap opening or closing shots.");
        if (section.start < previousEnd)
            refuse("Fixed camera sections overlap. Adjust their start or end timecodes.");
        if (!rangeContaining(engine.coverageOf(section.angle), {section.start, section.end}))
            refuse(fmt::format("The camera chosen for a fixed section has missing footage between "
                               "{} and {}. Choose another camera or shorten the section.",
                               engine.timecode(section.start), engine.timecode(section.end)));
        previousEnd = section.end;
    }
    return sections;
}

void checkInputs(const CutEngine& engine, const GenerationInputs& inputs) {
    for (const auto& [angle, seconds] : inputs.returnTimes) {
        if (!limits::returnSeconds.contains(seconds))
            refuse("Minimum return times must be between 0 and 600 seconds.");
    }

    std::set<std::string_view> selected{inputs.mainCamera};
    selected.insert(inputs.otherCameras.begin(), inputs.otherCameras.end());
    const bool haveFootage = std::all_of(selected.begin(), selected.end(), [&](auto camera) {
        return !engine.coverageOf(camera).empty();
    });
    if (inputs.otherCameras.empty() || selected.size() != inputs.otherCameras.size() + 1 ||
        !haveFootage)
        refuse(chooseCameras);
    if (!mainFraction.contains(inputs.mainShare) ||
        !limits::averageShot.contains(inputs.averageShot))
        refuse(chooseCameras);

    for (const auto& [angle, weight] : inputs.frequencies) {
        if (!limits::frequency.contains(weight))
            refuse("Camera frequency must be between 1 and 10.");
    }
    checkShotRange(inputs.mainRange);
    checkShotRange(inputs.otherRange);
}

BookendFrames checkBookends(const CutEngine& engine, const GenerationInputs& inputs) {
    const std::int64_t openingFrames = bookendFrames(engine, inputs.opening);
    const std::int64_t closingFrames = bookendFrames(engine, inputs.closing);
    if (openingFrames + closingFrames > engine.length)
        refuse("The opening and closing shots are longer than the project. Reduce their lengths.");
    const std::int64_t closingStart = engine.length - closingFrames;
    if (inputs.opening)
        checkBookendFootage(engine.coverageOf(inputs.opening->angle), {0, openingFrames},
                            "opening");
    if (inputs.closing)
        checkBookendFootage(engine.coverageOf(inputs.closing->angle), {closingStart, engine.length},
                            "closing");
    return {openingFrames, closingStart};
}

CutFault checkCuts(const CutEngine& engine, const std::vector<Cut>& cuts) {
    std::int64_t position = 0;
    for (const Cut& cut : cuts) {
        // The end is compared as a difference: edited by hand, it may be past 64 bits.
        const bool follows =
            cut.start == position && cut.duration >= 1 && cut.duration <= engine.length - position;
        if (!follows ||
            !rangeContaining(engine.coverageOf(cut.angle), {position, position + cut.duration}))
            return CutFault::invalid;
        position += cut.duration;
    }
    return position == engine.length ? CutFault::none : CutFault::incomplete;
}

} // namespace shotweaver
