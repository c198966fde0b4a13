#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shotweaver {

/// What the program says of itself, in the words of an extension's bundle.
struct ExtensionDescription {
    std::string principalViewControllerClass;
    std::optional<std::string> version; // absent when it is not text
    std::optional<std::string> build;   // absent when it is not text

    bool operator==(const ExtensionDescription&) const = default;
};

/// Reads a description: a JSON object with "CFBundleShortVersionString", "CFBundleVersion" and, in
/// "NSExtension", "ProExtensionPrincipalViewControllerClass". Throws `PlatformError` when it is
/// none or names no class.
ExtensionDescription readExtensionDescription(std::string_view json);

} // namespace shotweaver
