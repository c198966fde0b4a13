#pragma once

#include "engine/import/Name.h"
#include "platform/XmlDocument.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace shotweaver {

/// The few ways in which elements are read. Other kinds of node (text, comments, processing
/// instructions) are never taken for elements, whatever they are called.

inline bool isElement(XmlNode node, Name name) {
    return node.isElement(name);
}

/// The child elements of an element in document order, all or those of one name. The tree may not
/// change while they are visited.
class Elements {
    static constexpr XmlName anyName = 0xFFFFFFFF;

  public:
    class Iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = XmlNode;
        using difference_type = std::ptrdiff_t;
        using pointer = const XmlNode*;
        using reference = XmlNode;

        Iterator() = default;
        Iterator(XmlNode node, XmlName name) : node_(node), name_(name) { skip(); }

        XmlNode operator*() const { return node_; }
        Iterator& operator++() {
            node_ = node_.next();
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
            while (node_ && !(name_ == anyName ? node_.isElement() : node_.isElement(name_)))
                node_ = node_.next();
        }

        XmlNode node_;
        XmlName name_ = anyName;
    };

    explicit Elements(XmlNode parent) : begin_(parent.firstChild(), anyName) {}
    Elements(XmlNode parent, Name name) : begin_(parent.firstChild(), name) {}

    Iterator begin() const { return begin_; }
    Iterator end() const { return {}; }
    bool empty() const { return begin() == end(); }

  private:
    Iterator begin_;
};

/// The first child element of that name; a null handle when there is none.
inline XmlNode firstElement(XmlNode parent, Name name) {
    XmlNode child = parent.firstChild();
    while (child && !child.isElement(name))
        child = child.next();
    return child;
}

/// Calls `visit` with every element below `element`, in document order. The visit may not change
/// the tree.
template <class Visit>
void forEachDescendant(XmlNode element, Visit visit) {
    for (const XmlNode child : Elements(element)) {
        visit(child);
        forEachDescendant(child, visit);
    }
}

template <std::size_t count>
bool isOneOf(const std::array<Name, count>& names, XmlName name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// True for an element with one of these names.
template <std::size_t count>
bool isOneOf(const std::array<Name, count>& names, XmlNode node) {
    return node.isElement() && isOneOf(names, node.nameNumber());
}

/// An attribute's text; absent when the element has no such attribute (an empty text is present).
inline std::optional<std::string_view> attribute(XmlNode element, Name name) {
    return element.attribute(name);
}

/// An attribute's text, or `fallback` when it is absent.
inline std::string_view attributeOr(XmlNode element, Name name, std::string_view fallback) {
    return attribute(element, name).value_or(fallback);
}

/// A clip's kind and the attributes that matter to its timing and its media, read in one pass: an
/// angle may hold tens of thousands of clips.
struct ClipAttributes {
    using Text = std::optional<std::string_view>;

    explicit ClipAttributes(XmlNode clip);

    bool isDisabled() const { return enabled == "0"; }
    /// True when the clip's sound is cut apart from its picture.
    bool hasSplitAudio() const { return audioStart || audioDuration; }

    /// The clip's name, or what it is when it has none.
    std::string_view label() const { return name.value_or(element.name()); }

    XmlNode element;
    std::size_t size; // bytes read, as a measure of the time that it took

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
bool hasScaledConformRate(XmlNode clip);

/// True for "asset-clip", "audio" and "video": the elements that refer to an asset through their
/// "ref".
bool isMediaClip(XmlNode element);

} // namespace shotweaver
