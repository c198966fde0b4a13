#pragma once

#include "platform/Environment.h"

#include <string>

namespace shotweaver {

/// Where the user's work is kept. The folders need not exist.
struct StateFolders {
    std::string session;      // holds "session-v1.json"
    std::string userDefaults; // holds a file for each entry

    bool operator==(const StateFolders&) const = default;
};

/// Linux: "Shotweaver" in $XDG_DATA_HOME (or ~/.local/share) and in $XDG_CONFIG_HOME (or
/// ~/.config), as the XDG base directory specification has them; values that are not absolute are
/// ignored. macOS: ~/Library/Application Support/Shotweaver, and "Defaults" in it. Throws
/// `PlatformError` when no home folder is known.
StateFolders stateFolders(const Environment& environment);

} // namespace shotweaver
