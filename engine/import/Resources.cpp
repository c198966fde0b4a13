#include "engine/import/Resources.h"

#include "engine/import/XmlAccess.h"

#include <algorithm>

namespace shotweaver {

namespace {

bool hasMediaLocation(pugi::xml_node asset) {
    const Elements representations(asset, "media-rep");
    return std::any_of(representations.begin(), representations.end(),
                       [](pugi::xml_node each) { return !attributeOr(each, "src", "").empty(); }) ||
           !attributeOr(asset, "src", "").empty();
}

} // namespace

Asset::Asset(pugi::xml_node asset)
    : element(asset), hasVideo(attribute(asset, "hasVideo") == "1"),
      hasAudio(attribute(asset, "hasAudio") == "1"), hasLocation(hasMediaLocation(asset)),
      duration(attribute(asset, "duration")) {}

Media::Media(pugi::xml_node media) : element(media), sequence(firstElement(media, "sequence")) {}

template <class Resource>
void Resources::Index<Resource>::add(pugi::xml_node element) {
    if (const auto id = attribute(element, "id"))
        byID_.try_emplace(*id, element);
    else if (!withoutID_)
        withoutID_.emplace(element);
}

template <class Resource>
const Resource* Resources::Index<Resource>::find(std::optional<std::string_view> id) const {
    if (!id) return withoutID_ ? &*withoutID_ : nullptr;
    const auto found = byID_.find(*id);
    return found == byID_.end() ? nullptr : &found->second;
}

Resources::Resources(pugi::xml_node element) {
    for (const pugi::xml_node asset : Elements(element, "asset"))
        assets_.add(asset);
    for (const pugi::xml_node format : Elements(element, "format"))
        formats_.add(format);
    for (const pugi::xml_node media : Elements(element, "media"))
        media_.add(media);
}

const Asset* Resources::asset(std::optional<std::string_view> id) const {
    return assets_.find(id);
}

pugi::xml_node Resources::format(std::optional<std::string_view> id) const {
    const pugi::xml_node* const found = formats_.find(id);
    return found ? *found : pugi::xml_node();
}

const Media* Resources::media(std::optional<std::string_view> id) const {
    return media_.find(id);
}

} // namespace shotweaver
