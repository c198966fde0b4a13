#include "platform/StateFolders.h"

#include "platform/Files.h"
#include "platform/PlatformError.h"

namespace shotweaver {

namespace {

constexpr const char* folderName = "Shotweaver";

std::optional<std::string> absolutePath(const Environment& environment, const char* name) {
    std::optional<std::string> path = environment(name);
    if (path && !path->starts_with('/')) return std::nullopt;
    return path;
}

/// A folder in the user's home.
std::string inHome(const Environment& environment, const char* path) {
    const auto home = absolutePath(environment, "HOME");
    if (!home) throw PlatformError("No home folder is known: HOME is not set to an absolute path.");
    return pathInFolder(*home, path);
}

} // namespace

#if defined(__APPLE__)

StateFolders stateFolders(const Environment& environment) {
    const std::string folder =
        pathInFolder(inHome(environment, "Library/Application Support"), folderName);
    return {folder, pathInFolder(folder, "Defaults")};
}

#else

StateFolders stateFolders(const Environment& environment) {
    const auto folder = [&](const char* variable, const char* pathInHome) {
        const auto base = absolutePath(environment, variable);
        return pathInFolder(base ? *base : inHome(environment, pathInHome), folderName);
    };
    return {folder("XDG_DATA_HOME", ".local/share"), folder("XDG_CONFIG_HOME", ".config")};
}

#endif

} // namespace shotweaver
