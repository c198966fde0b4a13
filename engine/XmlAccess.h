#pragma once

#include <pugixml.hpp>

#include <optional>
#include <string_view>

namespace shotweaver {

/// The few ways in which elements are read. Other kinds of node (text, comments, processing
/// instructions) are never taken for elements, whatever they are called.

/// An attribute's text; absent when the element has no such attribute (an empty text is present).
std::optional<std::string_view> attribute(pugi::xml_node element, const char* name);

/// An attribute's text, or `fallback` when it is absent.
std::string_view attributeOr(pugi::xml_node element, const char* name, std::string_view fallback);

/// The first child element of that name; a null handle when there is none.
pugi::xml_node firstElement(pugi::xml_node parent, std::string_view name);

bool hasElement(pugi::xml_node parent, std::string_view name);

inline bool isElement(pugi::xml_node node) {
    return node.type() == pugi::node_element;
}

inline bool isElement(pugi::xml_node node, std::string_view name) {
    return isElement(node) && name == node.name();
}

/// True when a clip's timing is not its recording's own: a "conform-rate" child whose
/// "scaleEnabled" is not exactly "0" (also when absent).
bool hasScaledConformRate(pugi::xml_node clip);

/// True when the clip's sound is cut apart from its picture.
bool hasSplitAudio(pugi::xml_node clip);

/// True when an asset states where its recording is: a "media-rep" child with a non-empty "src", or
/// a non-empty "src" of its own.
bool hasMediaLocation(pugi::xml_node asset);

/// "asset-clip", "audio" and "video": the elements that refer to an asset through their "ref".
bool isMediaClipKind(std::string_view elementName);

} // namespace shotweaver
