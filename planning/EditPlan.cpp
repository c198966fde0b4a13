#include "planning/EditPlan.h"

#include "engine/FinalCutImportError.h"
#include "engine/generation/CutGeneration.h"
#include "engine/generation/EditChecks.h"
#include "planning/CutPoints.h"
#include "platform/Locale.h"

#include <fmt/format.h>

namespace shotweaver {

namespace {

std::optional<BookendShot> requestedShot(const Bookend& shot) {
    if (!shot.isEnabled) return std::nullopt;
    return BookendShot{shot.camera, shot.seconds};
}

void requireOrderedRanges(const EditSettings& settings) {
    if (const auto reversed = reversedRange(settings))
        throw FinalCutImportError::invalid(
            fmt::format("The minimum shot length of the {} is above its maximum. Set the minimum "
                        "or the maximum again.",
                        reversed->isMain ? "main camera" : "other cameras"));
}

} // namespace

std::vector<std::string> selectedOtherCameras(const EditSettings& settings,
                                              const Project& project) {
    std::vector<std::string> selected;
    for (const ImportedAngle& angle : project.videoAngles) {
        if (angle.id != settings.mainCamera && settings.otherCameras.contains(angle.id))
            selected.push_back(angle.id);
    }
    return selected;
}

std::vector<FixedCameraSection> fixedCameraSections(const EditSettings& settings,
                                                    const Project& project) {
    std::vector<FixedCameraSection> sections;
    for (const SectionDraft& draft : settings.sections) {
        const std::int64_t start = project.engine.frameForTimecode(draft.start);
        const std::int64_t end = project.engine.frameForTimecode(draft.end);
        sections.push_back({draft.camera, start, end});
    }
    return sections;
}

GenerationInputs generationInputs(const EditSettings& settings, const Project& project) {
    GenerationInputs inputs;
    inputs.mainCamera = settings.mainCamera;
    inputs.otherCameras = selectedOtherCameras(settings, project);
    inputs.mainShare = settings.mainShare / 100;
    inputs.averageShot = settings.averageShot;
    inputs.doubleMain = settings.doubleMain;
    inputs.varyOthers = settings.varyOthers;
    inputs.mainRange = SecondsRange{settings.mainMinimum, settings.mainMaximum};
    inputs.otherRange = SecondsRange{settings.otherMinimum, settings.otherMaximum};
    inputs.opening = requestedShot(settings.opening);
    inputs.closing = requestedShot(settings.closing);
    inputs.frequencies = settings.frequencies;
    inputs.sections = fixedCameraSections(settings, project);
    inputs.returnTimes = settings.returnTimes;
    inputs.cutPoints = cutPoints(settings, project);
    if (settings.followMarkers) inputs.notes = project.markers.notes;
    return inputs;
}

std::vector<FixedPart> plannedParts(const EditSettings& settings, const Project& project) {
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

std::vector<Cut> generateCutList(const EditSettings& settings, const Project& project,
                                 std::vector<Cut> kept, RandomSource& random,
                                 const UUIDMaker& makeUUID) {
    requireOrderedRanges(settings);
    checkAudioCoverage(project.engine, settings.audio);
    GenerationInputs inputs = generationInputs(settings, project);
    inputs.kept = std::move(kept);
    return generateCuts(project.engine, inputs, random, makeUUID);
}

SelectedCoverage coverageReport(const EditSettings& settings, const Project& project,
                                const std::vector<Cut>& kept) {
    std::vector<std::string> cameras{settings.mainCamera};
    const std::vector<std::string> others = selectedOtherCameras(settings, project);
    cameras.insert(cameras.end(), others.begin(), others.end());
    try {
        return selectedCoverage(project.engine, cameras, requestedShot(settings.opening),
                                requestedShot(settings.closing),
                                fixedCameraSections(settings, project), kept);
    } catch (const FinalCutImportError& error) {
        return {{}, error.what()};
    }
}

std::optional<std::string> coverageWarning(const SelectedCoverage& report,
                                           const EditSettings& settings, const Project& project,
                                           const std::string& locale) {
    if (report.message) return report.message;
    const CutEngine& engine = project.engine;

    const std::vector<FrameRange> gaps = uncoveredRanges(report.covered, engine.length);
    if (!gaps.empty()) {
        const FrameRange& gap = gaps.front();
        return fmt::format("No selected video{}: {} to {} ({} seconds). Choose a camera with "
                           "footage or trim that section in Final Cut.",
                           gap.upperBound == engine.length ? " at the ending" : "",
                           engine.timecode(gap.lowerBound), engine.timecode(gap.upperBound),
                           DecimalFormat(locale).text(engine.seconds(gap.length())));
    }
    if (settings.audio.empty()) return std::nullopt;
    const auto audio = engine.audioCoverage.find(settings.audio);
    const std::vector<FrameRange> audioGaps = uncoveredRanges(
        audio == engine.audioCoverage.end() ? Coverage{} : audio->second, engine.length);
    if (audioGaps.empty()) return std::nullopt;
    return fmt::format("Selected audio has a gap at {}. Choose a continuous audio angle.",
                       engine.timecode(audioGaps.front().lowerBound));
}

} // namespace shotweaver
