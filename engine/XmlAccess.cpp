#include "engine/XmlAccess.h"

#include <algorithm>
#include <array>

namespace shotweaver {

std::optional<std::string_view> attribute(pugi::xml_node element, const char* name) {
    const pugi::xml_attribute found = element.attribute(name);
    return found ? std::optional<std::string_view>(found.value()) : std::nullopt;
}

std::string_view attributeOr(pugi::xml_node element, const char* name, std::string_view fallback) {
    return attribute(element, name).value_or(fallback);
}

pugi::xml_node firstElement(pugi::xml_node parent, std::string_view name) {
    for (const pugi::xml_node child : parent.children()) {
        if (isElement(child, name)) return child;
    }
    return {};
}

bool hasElement(pugi::xml_node parent, std::string_view name) {
    return !firstElement(parent, name).empty();
}

bool hasScaledConformRate(pugi::xml_node clip) {
    const auto children = clip.children();
    return std::any_of(children.begin(), children.end(), [](pugi::xml_node child) {
        return isElement(child, "conform-rate") && attribute(child, "scaleEnabled") != "0";
    });
}

bool hasSplitAudio(pugi::xml_node clip) {
    return attribute(clip, "audioStart").has_value() ||
           attribute(clip, "audioDuration").has_value();
}

bool hasMediaLocation(pugi::xml_node asset) {
    const auto children = asset.children();
    const bool hasRepresentation =
        std::any_of(children.begin(), children.end(), [](pugi::xml_node child) {
            return isElement(child, "media-rep") && !attributeOr(child, "src", "").empty();
        });
    return hasRepresentation || !attributeOr(asset, "src", "").empty();
}

bool isMediaClipKind(std::string_view elementName) {
    static constexpr std::array<std::string_view, 3> MediaClipKinds{"asset-clip", "audio", "video"};
    return std::find(MediaClipKinds.begin(), MediaClipKinds.end(), elementName) !=
           MediaClipKinds.end();
}

} // namespace shotweaver
