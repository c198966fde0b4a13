#pragma once

#include "platform/Environment.h"

#include <optional>
#include <string>

namespace shotweaver {

/// The applications of a freedesktop.org desktop, each described by a desktop entry (Desktop Entry
/// Specification, version 1.5). Not on macOS.

/// The path of the entry with that file name, looked for in "applications" of $XDG_DATA_HOME and
/// then of each folder in $XDG_DATA_DIRS. The first file of that name counts; nothing when it is no
/// application that can be started: another type, "Hidden", no "Exec", a "TryExec" that is not to
/// be found.
std::optional<std::string> findDesktopEntry(const Environment& environment,
                                            const std::string& fileName);

/// Starts an entry's command on a file, with its field codes replaced: %f and %F by the file's
/// path, %u and %U by its URL, %i, %c and %k by the entry's icon, name and path, %% by a percent
/// sign, any other by nothing. A command without a code for files gets the path as its last
/// argument. Throws `PlatformError` when it cannot be started.
void openWithDesktopEntry(const std::string& entryPath, const std::string& file,
                          const Environment& environment);

} // namespace shotweaver
