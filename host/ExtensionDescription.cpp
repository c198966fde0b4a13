#include "host/ExtensionDescription.h"

#include "platform/JsonReader.h"

namespace shotweaver {

namespace {

std::optional<std::string> textIn(const JsonReader& json, std::string_view key) {
    const auto value = json.find(key);
    return value && value->isString() ? std::optional(value->string()) : std::nullopt;
}

} // namespace

ExtensionDescription readExtensionDescription(std::string_view json) {
    const Json document = parseJson(json);
    const JsonReader reader(document);
    const JsonReader extension = reader.at("NSExtension");
    return {extension.at("ProExtensionPrincipalViewControllerClass").string(),
            textIn(reader, "CFBundleShortVersionString"), textIn(reader, "CFBundleVersion")};
}

} // namespace shotweaver
