#include "engine/import/XmlAccess.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace shotweaver {

std::optional<std::string_view> attribute(pugi::xml_node element, const char* name) {
    const pugi::xml_attribute found = element.attribute(name);
    return found ? std::optional<std::string_view>(found.value()) : std::nullopt;
}

std::string_view attributeOr(pugi::xml_node element, const char* name, std::string_view fallback) {
    return attribute(element, name).value_or(fallback);
}

ClipAttributes::ClipAttributes(pugi::xml_node clip) {
    using Field = std::pair<const char*, Text ClipAttributes::*>;
    static constexpr std::array<Field, 9> fields{
        {{"ref", &ClipAttributes::ref},
         {"offset", &ClipAttributes::offset},
         {"name", &ClipAttributes::name},
         {"start", &ClipAttributes::start},
         {"duration", &ClipAttributes::duration},
         {"enabled", &ClipAttributes::enabled},
         {"srcEnable", &ClipAttributes::srcEnable},
         {"audioStart", &ClipAttributes::audioStart},
         {"audioDuration", &ClipAttributes::audioDuration}}};
    for (pugi::xml_attribute each = clip.first_attribute(); each; each = each.next_attribute()) {
        const char* const key = each.name();
        const auto field = std::find_if(fields.begin(), fields.end(), [&](const Field& one) {
            return *one.first == *key && std::strcmp(one.first, key) == 0;
        });
        if (field != fields.end()) this->*field->second = each.value();
    }
}

bool hasScaledConformRate(pugi::xml_node clip) {
    const Elements rates = elements(clip, "conform-rate");
    return std::any_of(rates.begin(), rates.end(),
                       [](pugi::xml_node rate) { return attribute(rate, "scaleEnabled") != "0"; });
}

bool holdsText(const char* elementName) {
    static constexpr std::array<const char*, 7> names{"text",     "text-style", "note",    "data",
                                                      "bookmark", "string",     "reserved"};
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        return *name == *elementName && std::strcmp(name, elementName) == 0;
    });
}

bool isMediaClipKind(std::string_view elementName) {
    static constexpr std::array<std::string_view, 3> MediaClipKinds{"asset-clip", "audio", "video"};
    return std::find(MediaClipKinds.begin(), MediaClipKinds.end(), elementName) !=
           MediaClipKinds.end();
}

} // namespace shotweaver
