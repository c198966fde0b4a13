#pragma once

#include "cli/Command.h"
#include "cli/SettingsFlags.h"
#include "host/Workspace.h"
#include "platform/ByteSource.h"
#include "platform/Environment.h"

#include <optional>
#include <string>

namespace shotweaver {

struct GenerateOptions {
    std::string project;
    std::optional<std::string> preset; // name
    std::optional<std::string> settingsFile;
    SettingsFlags flags;
    std::optional<std::string> seed;
    std::optional<std::string> output; // folder
    bool open = false;                 // hand the export to Final Cut Pro
    bool json = false;
};

/// Makes a rough edit, and exports it when an output folder is given. The environment tells where
/// presets are, the workspace opens the export.
CommandResult runGenerate(const GenerateOptions& options, ByteSource& in,
                          const Environment& environment, Workspace& workspace);

} // namespace shotweaver
