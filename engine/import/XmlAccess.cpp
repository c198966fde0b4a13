#include "engine/import/XmlAccess.h"

#include <array>

namespace shotweaver {

std::optional<std::string_view> attribute(pugi::xml_node element, const char* name) {
    const pugi::xml_attribute found = element.attribute(name);
    return found ? std::optional<std::string_view>(found.value()) : std::nullopt;
}

std::string_view attributeOr(pugi::xml_node element, const char* name, std::string_view fallback) {
    return attribute(element, name).value_or(fallback);
}

ClipAttributes::ClipAttributes(pugi::xml_node clip) : kind(clip.name()), size(kind.size()) {
    constexpr std::size_t fixedSize = 16; // reading an attribute takes as long as so many bytes
    const auto take = [&](Text& field, pugi::xml_attribute each) {
        field = each.value();
        size += field->size();
    };
    for (pugi::xml_attribute each = clip.first_attribute(); each; each = each.next_attribute()) {
        const std::string_view key = each.name();
        size += fixedSize + key.size();
        if (key == "ref") take(ref, each);
        if (key == "offset") take(offset, each);
        if (key == "name") take(name, each);
        if (key == "start") take(start, each);
        if (key == "duration") take(duration, each);
        if (key == "enabled") take(enabled, each);
        if (key == "srcEnable") take(srcEnable, each);
        if (key == "audioStart") take(audioStart, each);
        if (key == "audioDuration") take(audioDuration, each);
    }
}

bool hasScaledConformRate(pugi::xml_node clip) {
    for (const pugi::xml_node rate : Elements(clip, "conform-rate")) {
        if (attribute(rate, "scaleEnabled") != "0") return true;
    }
    return false;
}

bool holdsText(const char* elementName) {
    static constexpr std::array<const char*, 7> names{"text",     "text-style", "note",    "data",
                                                      "bookmark", "string",     "reserved"};
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        return *name == *elementName && std::strcmp(name, elementName) == 0;
    });
}

bool isMediaClipKind(std::string_view elementName) {
    static constexpr std::array<std::string_view, 3> mediaClipKinds{"asset-clip", "audio", "video"};
    return isOneOf(mediaClipKinds, elementName);
}

} // namespace shotweaver
