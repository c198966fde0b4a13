#include "cli/PresetsCommand.h"

#include "cli/Grammar.h"
#include "cli/TextTable.h"
#include "engine/AngleNames.h"
#include "platform/StateFolders.h"
#include "platform/UserDefaults.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>

namespace shotweaver {

namespace {

struct PresetsOptions {
    bool json = false;
};

constexpr const char* footer =
    R"(
One name a line. "generate --preset NAME" applies one; letters of either case will do.

Examples:
  shotweaver presets
  shotweaver generate "Sunday.fcpxml" --preset "Sunday sermon" --output out)";

std::string presetData(const CommandContext& context) {
    const StateFolders folders = stateFolders(context.environment);
    return UserDefaults(context.files, folders.userDefaults).data(presetsEntry);
}

CommandResult run(const PresetsOptions& options, const CommandContext& context) {
    const std::string data = presetData(context);
    const std::vector<EditPreset> presets = loadPresets(data);
    CommandResult result;
    result.isData = options.json;
    if (options.json) {
        result.output = (data.empty() ? "[]" : data) + "\n";
        return result;
    }
    for (const EditPreset& preset : presets)
        result.output += oneLine(preset.name) + "\n";
    return result;
}

} // namespace

Verb addPresets(CLI::App& program) {
    const auto options = std::make_shared<PresetsOptions>();
    CLI::App& verb = *program.add_subcommand("presets", "List the presets saved in the panel");
    verb.add_flag("--json", options->json, "Print the stored JSON array");
    verb.footer(footer);
    return {&verb, "[--json]",
            [options](const CommandContext& context) { return run(*options, context); }};
}

EditPreset presetNamed(const std::string& name, const CommandContext& context) {
    const std::vector<EditPreset> presets = loadPresets(presetData(context));
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
