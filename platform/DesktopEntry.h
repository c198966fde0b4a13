#pragma once

#include "platform/Environment.h"
#include "platform/FileCalls.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// An application as a desktop entry describes it (freedesktop.org's Desktop Entry Specification,
/// version 1.5).
struct DesktopEntry {
    std::string path; // of the entry's file
    std::string name;
    std::string icon;
    std::string exec; // the value of "Exec", its escapes resolved, still quoted
    std::string tryExec;
    std::string folder; // working folder, "Path"; empty when not given

    bool operator==(const DesktopEntry&) const = default;
};

/// Reads the text of an entry's file. Nothing when it is not an application that can be started:
/// another type, "Hidden", no "Exec".
std::optional<DesktopEntry> parseDesktopEntry(std::string_view text, std::string path);

/// The application whose entry has that file name, looked for in "applications" of $XDG_DATA_HOME
/// and then of each folder in $XDG_DATA_DIRS. The first file of that name counts; nothing when it
/// cannot be read, is no application or its "TryExec" is not to be found.
std::optional<DesktopEntry> findDesktopEntry(FileCalls& calls, const Environment& environment,
                                             const std::string& fileName);

/// The command that opens a file with the application: quoting resolved, field codes replaced (%f,
/// %F, %u, %U by the file, %i, %c and %k by the entry's icon, name and path, %% by a percent sign,
/// the deprecated ones by nothing). A command without a code for files gets the path as its last
/// argument. Nothing when the quoting is wrong.
std::optional<std::vector<std::string>> openCommand(const DesktopEntry& entry,
                                                    const std::string& file);

} // namespace shotweaver
