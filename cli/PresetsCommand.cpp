#include "cli/PresetsCommand.h"

#include "cli/TextTable.h"
#include "engine/AngleNames.h"
#include "platform/FileCalls.h"
#include "platform/StateFolders.h"
#include "platform/UserDefaults.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

std::string presetData(const Environment& environment) {
    return UserDefaults(systemFileCalls(), stateFolders(environment).userDefaults)
        .data(presetsEntry);
}

} // namespace

CommandResult runPresets(const PresetsOptions& options, const Environment& environment) {
    const std::string data = presetData(environment);
    const std::vector<EditPreset> presets = loadPresets(data);
    CommandResult result;
    result.isJson = options.json;
    if (options.json) {
        result.output = (data.empty() ? "[]" : data) + "\n";
        return result;
    }
    for (const EditPreset& preset : presets)
        result.output += oneLine(preset.name) + "\n";
    return result;
}

EditPreset presetNamed(const std::string& name, const Environment& environment) {
    const std::vector<EditPreset> presets = loadPresets(presetData(environment));
    const std::string wanted = normalizedName(name);
    const auto found = std::find_if(presets.begin(), presets.end(), [&](const EditPreset& preset) {
        return normalizedName(preset.name) == wanted;
    });
    if (found == presets.end())
        throw UsageError(fmt::format(
            "--preset: no saved preset has the name \"{}\". \"shotweaver presets\" lists them.",
            name));
    return *found;
}

} // namespace shotweaver
