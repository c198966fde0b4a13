#pragma once

#include "cli/Command.h"
#include "engine/EditSettings.h"
#include "engine/Project.h"

#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// The flags of `generate` that change settings, as typed.
struct SettingsFlags {
    std::optional<std::string> mainCamera;
    std::optional<std::string> otherCameras;
    std::optional<std::string> audio;
    std::optional<std::string> mainShare;
    std::optional<std::string> mainRange;
    std::optional<std::string> otherRange;
    bool doubleMain = false;
    std::vector<std::string> frequencies;
    std::vector<std::string> returnTimes;
    std::optional<std::string> opening;
    std::optional<std::string> closing;
    std::vector<std::string> sections;
};

/// Settings with the flags in place. Throws `UsageError` for a flag that cannot be read, or that
/// names no angle or several; numbers out of their ranges are left to the engine's own checks.
EditSettings withFlags(EditSettings settings, const SettingsFlags& flags, const Project& project);

/// Throws `UsageError` when a shortest shot is longer than the longest.
void requireOrderedRanges(const EditSettings& settings);

} // namespace shotweaver
