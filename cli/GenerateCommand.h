#pragma once

#include "cli/Command.h"
#include "cli/SettingsFlags.h"
#include "platform/ByteSource.h"

#include <optional>
#include <string>

namespace shotweaver {

struct GenerateOptions {
    std::string project;
    std::optional<std::string> settingsFile;
    SettingsFlags flags;
    std::optional<std::string> seed;
    std::optional<std::string> output; // folder
    bool json = false;
};

/// Makes a rough edit, and exports it when an output folder is given.
CommandResult runGenerate(const GenerateOptions& options, ByteSource& in);

} // namespace shotweaver
