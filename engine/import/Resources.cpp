#include "engine/import/Resources.h"

#include "engine/import/XmlAccess.h"

#include <algorithm>

namespace shotweaver {

namespace {

bool hasMediaLocation(XmlNode asset) {
    const Elements representations(asset, "media-rep");
    return std::any_of(representations.begin(), representations.end(),
                       [](XmlNode each) { return !attributeOr(each, "src", "").empty(); }) ||
           !attributeOr(asset, "src", "").empty();
}

bool hasCompoundClip(XmlNode element) {
    const XmlRange children = element.children();
    return isElement(element, "ref-clip") ||
           std::any_of(children.begin(), children.end(), hasCompoundClip);
}

} // namespace

Asset::Asset(XmlNode asset)
    : element(asset), hasVideo(attribute(asset, "hasVideo") == "1"),
      hasAudio(attribute(asset, "hasAudio") == "1"), hasLocation(hasMediaLocation(asset)),
      duration(attribute(asset, "duration")) {}

Media::Media(XmlNode media)
    : element(media), sequence(firstElement(media, "sequence")),
      isSelfContained(sequence && !hasCompoundClip(media)) {}

template <class Resource>
void Resources::Index<Resource>::add(XmlNode element) {
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

Resources::Resources(XmlNode element) {
    for (const XmlNode asset : Elements(element, "asset"))
        assets_.add(asset);
    for (const XmlNode format : Elements(element, "format"))
        formats_.add(format);
    for (const XmlNode media : Elements(element, "media"))
        media_.add(media);
}

const Asset* Resources::asset(std::optional<std::string_view> id) const {
    return assets_.find(id);
}

XmlNode Resources::format(std::optional<std::string_view> id) const {
    const XmlNode* const found = formats_.find(id);
    return found ? *found : XmlNode();
}

const Media* Resources::media(std::optional<std::string_view> id) const {
    return media_.find(id);
}

} // namespace shotweaver
