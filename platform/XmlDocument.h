#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace shotweaver {

class XmlDocument;

/// The names that a reader asks for by number. The first `textHolders` of them are of elements
/// whose white space is always content.
struct XmlVocabulary {
    std::span<const std::string_view> names;
    std::size_t textHolders = 0;
};

/// A name's number in a document: its place in the vocabulary, or beyond it for other names.
using XmlName = std::uint32_t;

enum class XmlKind : std::uint8_t { document, element, text, cdata, comment, instruction };

/// Handles from one to the next, for a range-based for.
template <class Handle>
class XmlRange {
  public:
    class Iterator {
      public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Handle;
        using difference_type = std::ptrdiff_t;
        using pointer = const Handle*;
        using reference = Handle;

        Iterator() = default;
        explicit Iterator(Handle handle) : handle_(handle) {}

        Handle operator*() const { return handle_; }
        Iterator& operator++() {
            handle_ = handle_.next();
            return *this;
        }
        Iterator operator++(int) {
            Iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const Iterator&) const = default;

      private:
        Handle handle_;
    };

    explicit XmlRange(Handle first) : first_(first) {}

    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return {}; }

  private:
    Handle first_;
};

/// A handle to an attribute, or to none. Valid as long as its document.
class XmlAttribute {
  public:
    XmlAttribute() = default;

    explicit operator bool() const { return document_ != nullptr; }
    bool operator==(const XmlAttribute&) const = default;

    // Of an attribute that is there.
    XmlName nameNumber() const;
    std::string_view name() const;
    std::string_view value() const; // a NUL follows it

    /// The next one of the same element.
    XmlAttribute next() const;

  private:
    friend class XmlNode;

    XmlAttribute(const XmlDocument* document, std::uint32_t index)
        : document_(document), index_(index) {}

    const XmlDocument* document_ = nullptr;
    std::uint32_t index_ = 0;
};

/// A handle to a node, or to none, which has no name, no value, no children and no attributes.
/// Valid as long as its document.
class XmlNode {
  public:
    XmlNode() = default;

    explicit operator bool() const { return document_ != nullptr; }
    bool operator==(const XmlNode&) const = default;
    /// Some order among a document's nodes, for sets of them.
    bool operator<(XmlNode other) const { return index_ < other.index_; }

    XmlKind kind() const; // of a node that is there
    bool isElement() const { return *this && kind() == XmlKind::element; }
    bool isElement(XmlName name) const;

    /// Of an element or an instruction; empty for others.
    std::string_view name() const;
    XmlName nameNumber() const; // of an element
    /// Of a text, CDATA section, comment or instruction, and a NUL follows it; empty for others.
    std::string_view value() const;
    /// True for an element whose white space is always content.
    bool holdsText() const;

    XmlNode firstChild() const;
    /// The next one of the same parent.
    XmlNode next() const;
    XmlRange<XmlNode> children() const { return XmlRange(firstChild()); }

    XmlRange<XmlAttribute> attributes() const;
    /// An attribute's text; nothing when there is no such attribute.
    std::optional<std::string_view> attribute(XmlName name) const;
    std::optional<std::string_view> attribute(std::string_view name) const;

  private:
    friend class XmlDocument;

    XmlNode(const XmlDocument* document, std::uint32_t index)
        : document_(document), index_(index) {}

    const XmlDocument* document_ = nullptr;
    std::uint32_t index_ = 0;
};

/// A parsed document in about half of the memory of its text: records of 16 bytes for nodes and 8
/// for attributes that refer to each other, to names and to values by number. Read-only once it is
/// parsed.
class XmlDocument {
  public:
    explicit XmlDocument(const XmlVocabulary& vocabulary);
    XmlDocument(const XmlDocument&) = delete;
    XmlDocument& operator=(const XmlDocument&) = delete;
    ~XmlDocument() = default;

    /// What holds the outermost element and what stands beside it.
    XmlNode root() const { return {this, 0}; }
    /// The outermost element.
    XmlNode documentElement() const;

    // For the parser. Each throws `PlatformError` when the document gets larger than 32 bits count:
    // nodes, attributes, bytes of values.

    /// Adds a node to `parent`: after `previous`, or as the first one when that is none.
    XmlNode insert(XmlNode parent, XmlNode previous, XmlKind kind, std::string_view name,
                   std::string_view value = {});
    /// Adds an attribute to the element that was added last.
    void addAttribute(std::string_view name, std::string_view value);

  private:
    friend class XmlAttribute;
    friend class XmlNode;

    static constexpr std::uint32_t none = 0xFFFFFFFF;

    struct Node {
        static constexpr XmlName lastName = 0x0FFFFFFF;

        XmlKind kind : 4;
        XmlName name : 28;
        std::uint32_t next = none;
        std::uint32_t firstChild = none;
        std::uint32_t content = none; // an element's first attribute, another node's value
    };

    struct Attribute {
        bool isLast : 4; // of its element
        XmlName name : 28;
        std::uint32_t value;
    };

    /// Records by number. They stay where they are.
    template <class Record>
    class Records {
      public:
        std::uint32_t add(const Record& record);
        std::uint32_t size() const { return size_; }
        Record& operator[](std::uint32_t index) {
            return blocks_[index / blockSize][index % blockSize];
        }
        const Record& operator[](std::uint32_t index) const {
            return blocks_[index / blockSize][index % blockSize];
        }

      private:
        static constexpr std::uint32_t blockSize = 1U << 12U;

        std::vector<std::unique_ptr<Record[]>> blocks_;
        std::uint32_t size_ = 0;
    };

    /// Texts by the place where they begin, each with a NUL behind it. They stay where they are.
    class Texts {
      public:
        std::uint32_t add(std::string_view text);
        const char* operator[](std::uint32_t place) const {
            return blocks_[place / blockSize] + place % blockSize;
        }

      private:
        static constexpr std::uint32_t blockSize = 1U << 16U;

        std::vector<std::unique_ptr<char[]>> memory_;
        std::vector<char*> blocks_; // a text that is longer than one takes several
        std::uint64_t end_ = 0;
    };

    XmlName number(std::string_view name);
    const Node& node(XmlNode handle) const { return nodes_[handle.index_]; }

    std::size_t textHolders_;
    Records<Node> nodes_;
    Records<Attribute> attributes_;
    Texts texts_;
    std::vector<std::string_view> names_; // kept in `texts_`
    std::unordered_map<std::string_view, XmlName> numbers_;
};

inline XmlName XmlAttribute::nameNumber() const {
    return document_->attributes_[index_].name;
}

inline std::string_view XmlAttribute::name() const {
    return document_->names_[nameNumber()];
}

inline std::string_view XmlAttribute::value() const {
    return document_->texts_[document_->attributes_[index_].value];
}

inline XmlAttribute XmlAttribute::next() const {
    if (document_->attributes_[index_].isLast) return {};
    return {document_, index_ + 1};
}

inline XmlKind XmlNode::kind() const {
    return document_->node(*this).kind;
}

inline XmlName XmlNode::nameNumber() const {
    return document_->node(*this).name;
}

inline bool XmlNode::isElement(XmlName name) const {
    return isElement() && nameNumber() == name;
}

inline XmlNode XmlNode::firstChild() const {
    if (!*this) return {};
    const std::uint32_t first = document_->node(*this).firstChild;
    return first == XmlDocument::none ? XmlNode() : XmlNode(document_, first);
}

inline XmlNode XmlNode::next() const {
    const std::uint32_t next = document_->node(*this).next;
    return next == XmlDocument::none ? XmlNode() : XmlNode(document_, next);
}

inline XmlRange<XmlAttribute> XmlNode::attributes() const {
    const bool hasSome = isElement() && document_->node(*this).content != XmlDocument::none;
    return XmlRange(hasSome ? XmlAttribute(document_, document_->node(*this).content)
                            : XmlAttribute());
}

} // namespace shotweaver
