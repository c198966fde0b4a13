#pragma once

#include <CLI/CLI.hpp>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace shotweaver {

/// Parts of the grammar that verbs share. Values are read as text: what they have to be is for the
/// verbs to say. What an option fills must live as long as the grammar.

/// The first argument of most verbs.
void addProject(CLI::App& verb, std::string& project);

/// An option whose last value counts.
CLI::Option* addText(CLI::App& verb, const std::string& name, std::optional<std::string>& value,
                     const std::string& help, const std::string& form);

/// An option that may be given several times.
CLI::Option* addTexts(CLI::App& verb, const std::string& name, std::vector<std::string>& values,
                      const std::string& help, const std::string& form);

/// The folder of an export, and whether the XML is then handed over.
CLI::Option* addOutput(CLI::App& verb, std::optional<std::string>& folder, const std::string& help);
void addOpen(CLI::App& verb, bool& open);

} // namespace shotweaver
