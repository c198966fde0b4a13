#include "planning/EditPlan.h"

#include "engine/FinalCutImportError.h"
#include "planning/ProjectDefaults.h"
#include "platform/Locale.h"

#include <fmt/format.h>

namespace shotweaver {

namespace {

std::optional<BookendShot> bookend(bool isEnabled, const std::string& camera, double seconds) {
    return isEnabled ? std::optional(BookendShot{camera, seconds}) : std::nullopt;
}

std::optional<BookendShot> openingOf(const EditSettings& settings) {
    return bookend(settings.openingEnabled, settings.openingCamera, settings.openingSeconds);
}

std::optional<BookendShot> closingOf(const EditSettings& settings) {
    return bookend(settings.closingEnabled, settings.closingCamera, settings.closingSeconds);
}

/// The panel keeps its ranges in order; settings that arrive whole may hold anything.
void requireOrderedRanges(const EditSettings& settings) {
    const auto require = [](const char* cameras, double minimum, double maximum) {
        if (minimum > maximum)
            throw FinalCutImportError::invalid(
                fmt::format("The minimum shot length of the {} is above its maximum. Set the "
                            "minimum or the maximum again.",
                            cameras));
    };
    require("main camera", settings.mainMinimum, settings.mainMaximum);
    require("other cameras", settings.otherMinimum, settings.otherMaximum);
}

} // namespace

std::vector<std::string> selectedOtherCameras(const EditSettings& settings,
                                              const ImportedProject& imported,
                                              const CutEngine& engine) {
    std::vector<std::string> selected;
    for (std::string& id : videoAngleIDs(imported, engine)) {
        if (id != settings.mainCamera && settings.otherCameras.contains(id))
            selected.push_back(std::move(id));
    }
    return selected;
}

std::vector<FixedCameraSection> fixedCameraSections(const EditSettings& settings,
                                                    const CutEngine& engine) {
    std::vector<FixedCameraSection> sections;
    for (const SectionDraft& draft : settings.sections) {
        const std::int64_t start = engine.frameForTimecode(draft.start);
        const std::int64_t end = engine.frameForTimecode(draft.end);
        sections.push_back({draft.camera, start, end});
    }
    return sections;
}

GenerationInputs generationInputs(const EditSettings& settings, const ImportedProject& imported,
                                  const CutEngine& engine) {
    GenerationInputs inputs;
    inputs.mainCamera = settings.mainCamera;
    inputs.otherCameras = selectedOtherCameras(settings, imported, engine);
    inputs.mainShare = settings.mainShare / 100;
    inputs.averageShot = settings.averageShot;
    inputs.doubleMain = settings.doubleMain;
    inputs.mainRange = SecondsRange{settings.mainMinimum, settings.mainMaximum};
    inputs.otherRange = SecondsRange{settings.otherMinimum, settings.otherMaximum};
    inputs.opening = openingOf(settings);
    inputs.closing = closingOf(settings);
    inputs.frequencies = settings.frequencies;
    inputs.sections = fixedCameraSections(settings, engine);
    inputs.returnTimes = settings.returnTimes;
    return inputs;
}

std::vector<Cut> generateCutList(const EditSettings& settings, const ImportedProject& imported,
                                 const CutEngine& engine, RandomSource& random,
                                 const UUIDMaker& makeUUID) {
    requireOrderedRanges(settings);
    engine.checkAudioCoverage(settings.audio);
    return engine.generateCuts(generationInputs(settings, imported, engine), random, makeUUID);
}

SelectedCoverage coverageReport(const EditSettings& settings, const ImportedProject& imported,
                                const CutEngine& engine) {
    std::vector<std::string> cameras{settings.mainCamera};
    const std::vector<std::string> others = selectedOtherCameras(settings, imported, engine);
    cameras.insert(cameras.end(), others.begin(), others.end());
    try {
        return engine.selectedCoverage(cameras, openingOf(settings), closingOf(settings),
                                       fixedCameraSections(settings, engine));
    } catch (const FinalCutImportError& error) {
        return {{}, error.what()};
    }
}

std::optional<std::string> coverageWarning(const SelectedCoverage& report,
                                           const EditSettings& settings, const CutEngine& engine,
                                           const std::string& locale) {
    if (report.message) return report.message;

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
