#pragma once

#include "platform/Uuid.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

struct PresetReturnTime {
    std::string angleName;
    double seconds = 0; // 0 to 600

    bool operator==(const PresetReturnTime&) const = default;
};

struct PresetFrequency {
    std::string angleName;
    double weight = 0; // 1 to 10

    bool operator==(const PresetFrequency&) const = default;
};

/// An opening or closing shot.
struct PresetBookend {
    std::string angleName;
    double seconds = 0; // 1 to 120

    bool operator==(const PresetBookend&) const = default;
};

/// A named set of pacing and camera preferences. It outlives projects, so cameras are kept by
/// name.
struct EditPreset {
    UUID id;
    std::string name;       // unique once normalised
    double mainShare = 0;   // percent, 10 to 90
    double averageShot = 0; // seconds, 4 to 20
    bool doubleMain = false;
    bool varyOthers = false;
    bool cutAtMarkers = false;
    bool followMarkers = false;
    std::string mainAngleName;
    std::vector<std::string> otherAngleNames;
    std::string audioAngleName;
    std::optional<std::vector<PresetReturnTime>> returnTimes;
    std::optional<std::vector<PresetFrequency>> frequencies;
    std::optional<PresetBookend> opening; // absent when off
    std::optional<PresetBookend> closing;
    std::optional<double> mainMinimum; // seconds, 1 to 120; each pair is absent or ordered
    std::optional<double> mainMaximum;
    std::optional<double> otherMinimum;
    std::optional<double> otherMaximum;

    bool operator==(const EditPreset&) const = default;
};

/// The user-defaults entry that holds all presets.
inline constexpr std::string_view presetsEntry = "Shotweaver.savedPresets.v1";

/// Reads the stored presets; none in empty bytes. Throws `PlatformError` when they are not the JSON
/// of presets, and `FinalCutImportError` when their content breaks a rule.
std::vector<EditPreset> loadPresets(std::string_view bytes);

/// The presets as they are stored. Throws like `loadPresets`, which reads the result once: what
/// could not be loaded again is never stored.
std::string encodePresets(const std::vector<EditPreset>& presets);

} // namespace shotweaver
