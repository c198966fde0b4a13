#include "cli/Grammar.h"

namespace shotweaver {

namespace {

/// An empty folder is most likely a variable of the shell that was never set.
std::string isNotEmpty(const std::string& text) {
    return text.empty() ? "the folder is empty" : "";
}

} // namespace

void addProject(CLI::App& verb, std::string& project) {
    verb.add_option("PROJECT", project,
                    "What Final Cut Pro exported: a .fcpxml file, a .fcpxmld bundle, or - for "
                    "FCPXML on the standard input")
        ->required()
        ->type_name("");
}

CLI::Option* addText(CLI::App& verb, const std::string& name, std::optional<std::string>& value,
                     const std::string& help, const std::string& form) {
    return verb
        .add_option_function<std::string>(
            name, [&value](const std::string& text) { value = text; }, help)
        ->type_name(form);
}

CLI::Option* addTexts(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                      const std::string& help, const std::string& form) {
    return verb.add_option(name, values, help)->type_name(form)->allow_extra_args(false);
}

CLI::Option* addOutput(CLI::App& verb, std::optional<std::string>& folder,
                       const std::string& help) {
    return addText(verb, "--output", folder, help, "DIR")->check(isNotEmpty);
}

void addOpen(CLI::App& verb, bool& open) {
    verb.add_flag("--open", open,
                  "Hand the XML to Final Cut Pro afterwards; the files stay when that fails");
}

} // namespace shotweaver
