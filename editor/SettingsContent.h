#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "persistence/EditPreset.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// What the settings column shows of the settings. Numbers in labels are cut to whole ones.

/// An entry of a picker.
struct PickerOption {
    std::string id; // empty for no choice
    std::string label;

    bool operator==(const PickerOption&) const = default;
};

/// Name, duration and frame rate of the project, the numbers in the locale's style.
std::string projectLine(const Project& project, const std::string& locale);

/// The video angles.
std::vector<PickerOption> cameraOptions(const Project& project);

/// The audio angles, marked when they do not cover the whole project; "Choose audio" before them
/// while none is chosen.
std::vector<PickerOption> audioOptions(const EditSettings& settings, const Project& project);

/// "Choose a preset" and the presets in their order.
std::vector<PickerOption> presetOptions(const std::vector<EditPreset>& presets);

/// An additional camera.
struct CameraRow {
    std::string id;
    std::string label;
    bool isIncluded = false;
    double frequency = defaultFrequency;
    std::string frequencyLabel;          // "Frequency: 5"
    std::string frequencyAccessibleName; // of the slider
    std::string choiceShare;             // "25% of additional camera choices"
    bool isFrequencyEnabled = false;
    std::string frequencyHelp;
    double wait = defaultReturnTime; // seconds; enabled while the camera is included
    std::string waitLabel;

    bool operator==(const CameraRow&) const = default;
};

/// One row for each video angle but the main camera.
std::vector<CameraRow> cameraRows(const EditSettings& settings, const Project& project);

/// The wait before returning to the main camera, seconds.
double mainWait(const EditSettings& settings);

/// "Wait before returning to main camera: 120 sec"
std::string mainWaitLabel(const EditSettings& settings);

std::string balanceText(double mainShare);

/// The main camera's part to expect with these shot lengths, a range that meets the target where it
/// is missed, and what else changes it. Empty while a range is reversed.
std::string shareForecast(const EditSettings& settings, const Project& project);

/// The toggles of markers with how many there are, and what to know of them.
std::string cutAtMarkersLabel(const Markers& markers);
std::string followMarkersLabel(const Markers& markers);
std::string markersHelp(const Markers& markers);

std::string minimumLabel(double seconds);
std::string maximumLabel(double seconds);
std::string secondsLabel(double seconds);

/// What is wrong with a fixed section's timecodes, for the eye; nothing where they can be used. A
/// label that drop-frame timecode skips is told with the next that exists.
struct SectionFaults {
    std::optional<std::string> start;
    std::optional<std::string> end;

    bool operator==(const SectionFaults&) const = default;
};
SectionFaults sectionFaults(const SectionDraft& section, const Project& project);

/// A chapter of the project, from 0 on, up to the next one that begins later, or to the end.
FrameRange chapterRange(std::size_t chapter, const Project& project);

/// "Sermon · 00:10:00:00 to 00:25:00:00"
std::string chapterText(std::size_t chapter, const Project& project);

/// What a screen reader calls a row of fixed sections, which count from 0: "Section 1".
std::string sectionTitle(std::size_t row);

} // namespace shotweaver
