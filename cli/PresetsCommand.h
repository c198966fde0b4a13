#pragma once

#include "cli/Command.h"
#include "persistence/EditPreset.h"
#include "platform/Environment.h"

#include <string>

namespace shotweaver {

struct PresetsOptions {
    bool json = false;
};

/// Lists the presets that the panel has saved.
CommandResult runPresets(const PresetsOptions& options, const Environment& environment);

/// The saved preset with that name once both are normalised. Throws `UsageError` when there is
/// none, and what reading the presets throws.
EditPreset presetNamed(const std::string& name, const Environment& environment);

} // namespace shotweaver
