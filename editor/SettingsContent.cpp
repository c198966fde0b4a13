#include "editor/SettingsContent.h"

#include "editor/CoverageContent.h"
#include "editor/PanelTexts.h"
#include "engine/FinalCutImportError.h"
#include "planning/EditPlan.h"
#include "planning/EditTexts.h"
#include "planning/ShareForecast.h"
#include "platform/Locale.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

/// Cut to a whole number; no zero has a sign.
std::string wholeNumber(double value) {
    return fmt::format("{:.0f}", std::trunc(value) + 0.0);
}

double frequencyOf(const EditSettings& settings, std::string_view camera) {
    return numberFor(settings.frequencies, camera, defaultFrequency);
}

std::string waitLabel(std::string_view title, double seconds) {
    return fmt::format("{}: {}", title, secondsLabel(seconds));
}

double sumOfFrequencies(const EditSettings& settings, const std::vector<std::string>& cameras) {
    double sum = 0;
    for (const std::string& camera : cameras)
        sum += frequencyOf(settings, camera);
    return sum;
}

/// What a camera's frequency makes of the choices among the additional cameras, `sum` being the
/// frequencies of those that are included.
std::string choiceShare(const CameraRow& row, double sum) {
    const double percent = row.isIncluded && sum > 0 ? std::round(row.frequency / sum * 100) : 0;
    return fmt::format("{:.0f}% of additional camera choices", percent);
}

/// Whether some selected camera waits before it returns, or did not record throughout.
bool isForecastLoose(const EditSettings& settings, const Project& project) {
    std::vector<std::string> cameras = selectedOtherCameras(settings, project);
    cameras.push_back(settings.mainCamera);
    const Coverage whole{{0, project.engine.length}};
    return std::any_of(cameras.begin(), cameras.end(), [&](const std::string& camera) {
        return numberFor(settings.returnTimes, camera, defaultReturnTime) > 0 ||
               project.engine.coverageOf(camera) != whole;
    });
}

} // namespace

std::string projectLine(const Project& project, const std::string& locale) {
    const DecimalFormat number(locale);
    return fmt::format("{} · {} seconds · {} fps", project.summary.name,
                       number.text(project.summary.duration),
                       number.text(project.summary.framesPerSecond));
}

std::vector<PickerOption> cameraOptions(const Project& project) {
    std::vector<PickerOption> options;
    for (const ImportedAngle& angle : project.videoAngles)
        options.push_back({angle.id, project.label(angle.id)});
    return options;
}

std::vector<PickerOption> audioOptions(const EditSettings& settings, const Project& project) {
    const CutEngine& engine = project.engine;
    std::vector<PickerOption> options;
    if (settings.audio.empty()) options.push_back({"", "Choose audio"});
    for (const ImportedAngle& angle : project.audioAngles) {
        const bool isWhole = engine.audioCoverage.at(angle.id) == Coverage{{0, engine.length}};
        options.push_back({angle.id, project.label(angle.id) + (isWhole ? "" : " (has gaps)")});
    }
    return options;
}

std::vector<PickerOption> presetOptions(const std::vector<EditPreset>& presets) {
    std::vector<PickerOption> options{{"", "Choose a preset"}};
    for (const EditPreset& preset : presets)
        options.push_back({preset.id.text(), preset.name});
    return options;
}

std::vector<CameraRow> cameraRows(const EditSettings& settings, const Project& project) {
    const std::vector<std::string> others = selectedOtherCameras(settings, project);
    const bool hasChoice = others.size() >= 2;
    const double sum = sumOfFrequencies(settings, others);
    std::vector<CameraRow> rows;
    for (const ImportedAngle& angle : project.videoAngles) {
        const std::string& id = angle.id;
        if (id == settings.mainCamera) continue;
        CameraRow row;
        row.id = id;
        row.label = project.label(id);
        row.isIncluded = settings.otherCameras.contains(id);
        row.frequency = frequencyOf(settings, id);
        row.frequencyLabel = "Frequency: " + wholeNumber(row.frequency);
        row.frequencyAccessibleName = "Frequency for " + row.label;
        row.choiceShare = choiceShare(row, sum);
        row.isFrequencyEnabled = row.isIncluded && hasChoice;
        row.frequencyHelp =
            hasChoice ? panelTexts::frequencyHelp : panelTexts::frequencyNeedsCameras;
        row.wait = numberFor(settings.returnTimes, id, defaultReturnTime);
        row.waitLabel = waitLabel("Wait before returning to this camera", row.wait);
        rows.push_back(std::move(row));
    }
    return rows;
}

double mainWait(const EditSettings& settings) {
    return numberFor(settings.returnTimes, settings.mainCamera, defaultReturnTime);
}

std::string mainWaitLabel(const EditSettings& settings) {
    return waitLabel("Wait before returning to main camera", mainWait(settings));
}

std::string balanceText(double mainShare) {
    const double share = std::trunc(mainShare);
    return fmt::format("Target screen time: Main {:.0f}% · Other cameras combined {:.0f}%", share,
                       100 - share);
}

std::string shareForecast(const EditSettings& settings, const Project& project) {
    if (reversedRange(settings)) return "";
    std::string text = fmt::format("About {:.0f}% with these shot lengths.",
                                   std::round(100 * expectedMainShare(settings)));
    if (const auto advice = rangeForTarget(settings))
        text += fmt::format(" For {}%: {} {} to {} seconds.", wholeNumber(settings.mainShare),
                            advice->isMain ? "main camera" : "other cameras",
                            wholeNumber(advice->range.lower), wholeNumber(advice->range.upper));
    if (isForecastLoose(settings, project)) text += " Return times and gaps change this.";
    return text;
}

std::string cutAtMarkersLabel(const Markers& markers) {
    return fmt::format("Cut at markers where shot lengths allow ({})", markers.cutPoints.size());
}

std::string followMarkersLabel(const Markers& markers) {
    return fmt::format("Follow markers named like a camera ({})", markers.notes.size());
}

std::string markersHelp(const Markers& markers) {
    if (markers.onTitles > 0) return markersText(markers).value_or("");
    return panelTexts::markersHelp;
}

std::string minimumLabel(double seconds) {
    return "Minimum: " + secondsLabel(seconds);
}

std::string maximumLabel(double seconds) {
    return "Maximum: " + secondsLabel(seconds);
}

std::string secondsLabel(double seconds) {
    return wholeNumber(seconds) + " sec";
}

namespace {

struct ReadTimecode {
    std::optional<std::int64_t> frame;
    std::optional<std::string> fault;
};

ReadTimecode readTimecode(const std::string& text, const CutEngine& engine) {
    try {
        return {engine.frameForTimecode(text), std::nullopt};
    } catch (const FinalCutImportError& failure) {
        if (const auto next = engine.labelAfterSkipped(text))
            return {
                std::nullopt,
                fmt::format("Drop-frame timecode skips this label. The next one is {}.", *next)};
        return {std::nullopt, failure.what()};
    }
}

} // namespace

SectionFaults sectionFaults(const SectionDraft& section, const Project& project) {
    const CutEngine& engine = project.engine;
    const auto [start, startFault] = readTimecode(section.start, engine);
    const auto [end, endFault] = readTimecode(section.end, engine);
    SectionFaults faults{startFault, endFault};
    const auto isOutside = [&](const std::optional<std::int64_t>& frame) {
        return frame && (*frame < 0 || *frame > engine.length);
    };
    const std::string outside =
        fmt::format("The project lasts from {}.", rangeText({0, engine.length}, engine));
    if (isOutside(start)) faults.start = outside;
    if (isOutside(end))
        faults.end = outside;
    else if (start && end && *end <= *start)
        faults.end = "The end comes after the start.";
    return faults;
}

FrameRange chapterRange(std::size_t chapter, const Project& project) {
    const std::vector<Chapter>& chapters = project.markers.chapters;
    const std::int64_t start = chapters[chapter].frame;
    const auto next = std::upper_bound(
        chapters.begin(), chapters.end(), start,
        [](std::int64_t frame, const Chapter& each) { return frame < each.frame; });
    return {start, next == chapters.end() ? project.engine.length : next->frame};
}

std::string chapterText(std::size_t chapter, const Project& project) {
    const std::string& name = project.markers.chapters[chapter].name;
    return fmt::format("{}{}{}", name, name.empty() ? "" : " · ",
                       rangeText(chapterRange(chapter, project), project.engine));
}

std::string sectionTitle(std::size_t row) {
    return fmt::format("Section {}", row + 1);
}

} // namespace shotweaver
