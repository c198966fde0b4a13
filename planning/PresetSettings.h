#pragma once

#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "persistence/EditPreset.h"

#include <optional>
#include <string>

namespace shotweaver {

/// The settings as a preset. Nothing when the cameras do not resolve: the main camera and the audio
/// angle must be among the angles, with at least one included additional camera. An opening or
/// closing shot whose camera is not a video angle is left out.
std::optional<EditPreset> presetOf(const EditSettings& settings, const Project& project, UUID id,
                                   std::string name);

/// Settings after a preset was applied, with the notice that tells what was matched.
struct AppliedPreset {
    EditSettings settings;
    std::string notice;
};

/// Pacing and balance are always taken over; the cameras and the audio angle only when every name
/// matches exactly one angle; frequencies, waits, opening and closing one by one. Fixed sections
/// stay. Without a project (null) no name matches.
AppliedPreset appliedPreset(const EditPreset& preset, EditSettings settings,
                            const Project* project);

} // namespace shotweaver
