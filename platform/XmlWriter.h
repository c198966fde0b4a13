#pragma once

#include "platform/ByteSink.h"
#include "platform/XmlDocument.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace shotweaver {

class XmlWriter;

/// How what is written of a node differs from the node. As it stands: not at all.
class XmlCopyRule {
  public:
    virtual ~XmlCopyRule() = default;

    /// Whether an element is left out, with all below it.
    virtual bool leavesOut(XmlNode /*element*/) const { return false; }

    /// Writes the attributes of an element.
    virtual void writeAttributes(XmlWriter& writer, XmlNode element) const;
};

/// Writes an XML document in UTF-8 into a sink, element by element, without holding a tree of it:
/// one element a line, nested elements indented by four spaces. Where text is content nothing is
/// added: inside an element that has text, and inside one that holds text by its name, everything
/// stands as it is. Every call throws what the sink throws.
class XmlWriter {
  public:
    /// Starts with the XML declaration (version 1.0, UTF-8). `sink` must outlive the writer.
    explicit XmlWriter(ByteSink& sink);

    /// Opens an element; `attribute` calls may follow until something is put into it. The name is
    /// not copied: it must stay valid until the element is closed.
    void begin(std::string_view name);
    void attribute(std::string_view name, const char* value);
    /// Closes the element opened last.
    void end();

    /// Opens an element that stands for `element` (its name, and its way with white space).
    void beginLike(XmlNode element, const XmlCopyRule& rule = {});

    /// Writes a node and everything below it.
    void node(XmlNode node, const XmlCopyRule& rule = {});

    /// Ends the document. Every element must be closed.
    void finish();

  private:
    enum class Escaping { attribute, text };

    struct Open {
        std::string_view name;
        bool isIndented;
        bool hasContent = false;
    };

    static bool mayIndent(XmlNode element, const XmlCopyRule& rule);
    void open(std::string_view name, bool isIndented);
    void closeStartTag();
    void startContent();
    void newLine(std::size_t depth);
    void leaf(XmlNode node);

    void put(std::string_view piece);
    void put(char c) { put({&c, 1}); }
    void putEscaped(const char* value, Escaping escaping);
    void flush();

    ByteSink& sink_;
    std::string block_; // what the sink has not got yet
    std::vector<Open> open_;
};

} // namespace shotweaver
