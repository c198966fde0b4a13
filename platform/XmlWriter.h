#pragma once

#include "platform/XmlIntake.h"

#include <pugixml.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

/// Writes an XML document in UTF-8 as text, element by element, without holding a tree of it: one
/// element a line, nested elements indented by four spaces. Where text is content nothing is added:
/// inside an element that has text, and inside one whose name `holdsText` is true of, everything
/// stands as it is.
class XmlWriter {
  public:
    /// Starts with the XML declaration (version 1.0, UTF-8). `expectedSize`, in bytes, only spares
    /// the text from moving while it grows.
    explicit XmlWriter(TextRule holdsText, std::size_t expectedSize = 0);

    /// Opens an element; `attribute` calls may follow until something is put into it. The name is
    /// not copied: it must stay valid until the element is closed.
    void begin(std::string_view name);
    void attribute(std::string_view name, const char* value);
    /// Closes the element opened last.
    void end();

    /// Opens an element that stands for `element` (its name, and its way with white space).
    void beginLike(pugi::xml_node element);

    /// Writes a node and everything below it.
    void node(pugi::xml_node node);

    /// The finished text. Every element must be closed.
    std::string take();

  private:
    enum class Escaping { attribute, text };

    struct Open {
        std::string_view name;
        bool isIndented;
        bool hasContent = false;
    };

    bool mayIndent(pugi::xml_node element) const;
    void open(std::string_view name, bool isIndented);
    void closeStartTag();
    void startContent();
    void newLine(std::size_t depth);
    void leaf(pugi::xml_node node);

    void put(std::string_view piece) { text_ += piece; }
    void put(char c) { text_ += c; }
    void putEscaped(const char* value, Escaping escaping);

    TextRule holdsText_;
    std::string text_;
    std::vector<Open> open_;
};

} // namespace shotweaver
