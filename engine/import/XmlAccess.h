#pragma once

#include <pugixml.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <optional>
#include <string_view>

namespace shotweaver {

/// The few ways in which elements are read. Other kinds of node (text, comments, processing
/// instructions) are never taken for elements, whatever they are called.

inline bool isElement(pugi::xml_node node) {
    return node.type() == pugi::node_element;
}

inline bool isElement(pugi::xml_node node, std::string_view name) {
    const char* const own = node.name();
    // Not measured first: a name may be long.
    return isElement(node) && std::strncmp(own, name.data(), name.size()) == 0 &&
           own[name.size()] == '\0';
}

/// The child elements of an element in document order, all or those of one name. The tree may not
/// change while they are visited.
class Elements {
  public:
    class Iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = pugi::xml_node;
        using difference_type = std::ptrdiff_t;
        using pointer = const pugi::xml_node*;
        using reference = pugi::xml_node;

        Iterator() = default;
        Iterator(pugi::xml_node node, std::string_view name) : node_(node), name_(name) { skip(); }

        pugi::xml_node operator*() const { return node_; }
        Iterator& operator++() {
            node_ = node_.next_sibling();
            skip();
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator& other) const { return node_ == other.node_; }

      private:
        void skip() {
            while (node_ && !(name_.empty() ? isElement(node_) : isElement(node_, name_)))
                node_ = node_.next_sibling();
        }

        pugi::xml_node node_;
        std::string_view name_; // empty for any
    };

    explicit Elements(pugi::xml_node parent, std::string_view name = {})
        : begin_(parent.first_child(), name) {}

    Iterator begin() const { return begin_; }
    Iterator end() const { return {}; }
    bool empty() const { return begin() == end(); }

  private:
    Iterator begin_;
};

/// The first child element of that name; a null handle when there is none.
inline pugi::xml_node firstElement(pugi::xml_node parent, std::string_view name) {
    pugi::xml_node child = parent.first_child();
    while (child && !isElement(child, name))
        child = child.next_sibling();
    return child;
}

/// Calls `visit` with every element below `element`, in document order. The visit may not change
/// the tree.
template <class Visit>
void forEachDescendant(pugi::xml_node element, Visit visit) {
    for (const pugi::xml_node child : Elements(element)) {
        visit(child);
        forEachDescendant(child, visit);
    }
}

template <std::size_t count>
bool isOneOf(const std::array<std::string_view, count>& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// An attribute's text; absent when the element has no such attribute (an empty text is present).
std::optional<std::string_view> attribute(pugi::xml_node element, const char* name);

/// An attribute's text, or `fallback` when it is absent.
std::string_view attributeOr(pugi::xml_node element, const char* name, std::string_view fallback);

/// A clip's kind and the attributes that matter to its timing and its media, read in one pass: an
/// angle may hold tens of thousands of clips.
struct ClipAttributes {
    using Text = std::optional<std::string_view>;

    explicit ClipAttributes(pugi::xml_node clip);

    bool isDisabled() const { return enabled == "0"; }
    /// True when the clip's sound is cut apart from its picture.
    bool hasSplitAudio() const { return audioStart || audioDuration; }

    std::string_view kind; // the element's name
    std::size_t size;      // bytes read, as a measure of the time that it took

    Text ref;
    Text offset;
    Text name;
    Text start;
    Text duration;
    Text enabled;
    Text srcEnable;
    Text audioStart;
    Text audioDuration;
};

/// True when a clip's timing is not its recording's own: a "conform-rate" child whose
/// "scaleEnabled" is not exactly "0" (also when absent).
bool hasScaledConformRate(pugi::xml_node clip);

/// "text", "text-style", "note", "data", "bookmark", "string" and "reserved": the elements with
/// character data, whose white space is content (the rule for `parseXml` and `XmlWriter`).
bool holdsText(const char* elementName);

/// "asset-clip", "audio" and "video": the elements that refer to an asset through their "ref".
bool isMediaClipKind(std::string_view elementName);

} // namespace shotweaver
