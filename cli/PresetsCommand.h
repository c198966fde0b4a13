#pragma once

#include "cli/Command.h"
#include "persistence/EditPreset.h"

namespace shotweaver {

/// "presets": lists the presets that the panel has saved.
Verb addPresets(CLI::App& program);

/// The saved preset with that name once both are normalised. Throws `UsageError` when there is
/// none, and what reading the presets throws.
EditPreset presetNamed(const std::string& name, const CommandContext& context);

} // namespace shotweaver
