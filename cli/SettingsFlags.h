#pragma once

#include "cli/Command.h"
#include "engine/EditSettings.h"
#include "engine/Project.h"
#include "platform/FileCalls.h"

#include <string>
#include <vector>

namespace shotweaver {

/// The flags of a verb that change settings: for each, what was typed, in its order.
struct SettingsFlags {
    std::vector<std::vector<std::string>> typed;
};

/// Adds the flags to a verb. `flags` must live as long as the grammar.
void addSettingsFlags(CLI::App& verb, SettingsFlags& flags);

/// Adds only those that choose the main camera and the audio.
void addAngleFlags(CLI::App& verb, SettingsFlags& flags);
bool areGiven(const SettingsFlags& flags);

/// Settings with the flags in place. Throws `UsageError` for a flag that cannot be read, or that
/// names no angle or several; numbers out of their ranges are left to the engine's own checks.
/// A file of times that cannot be read throws what `readCutTimes` and `FileSource` throw.
EditSettings withFlags(EditSettings settings, const SettingsFlags& flags, const Project& project,
                       FileCalls& files);

} // namespace shotweaver
