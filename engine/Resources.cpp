#include "engine/Resources.h"

#include "engine/XmlAccess.h"

namespace shotweaver {

Resources::Resources(pugi::xml_node element) : element_(element) {
    for (const pugi::xml_node resource : element.children()) {
        if (isElement(resource, "asset")) assets_.add(resource);
        if (isElement(resource, "format")) formats_.add(resource);
        if (isElement(resource, "media")) media_.add(resource);
    }
}

pugi::xml_node Resources::asset(std::optional<std::string_view> id) const {
    return assets_.find(id);
}

pugi::xml_node Resources::format(std::optional<std::string_view> id) const {
    return formats_.find(id);
}

pugi::xml_node Resources::media(std::optional<std::string_view> id) const {
    return media_.find(id);
}

void Resources::Index::add(pugi::xml_node resource) {
    if (const auto id = attribute(resource, "id"))
        byID.try_emplace(*id, resource);
    else if (!withoutID)
        withoutID = resource;
}

pugi::xml_node Resources::Index::find(std::optional<std::string_view> id) const {
    if (!id) return withoutID;
    const auto found = byID.find(*id);
    return found == byID.end() ? pugi::xml_node() : found->second;
}

} // namespace shotweaver
