#include "platform/XmlWriter.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>

namespace shotweaver {

namespace {

constexpr std::size_t blockSize = std::size_t{1} << 16U;

/// What stands for a character, or nothing when it stands for itself.
std::string_view escape(char c, bool isInAttribute) {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    // A raw carriage return is read back as a line feed, and raw white space in an attribute as a
    // space.
    case '\r':
        return "&#13;";
    case '"':
        return isInAttribute ? "&quot;" : "";
    case '\t':
        return isInAttribute ? "&#9;" : "";
    case '\n':
        return isInAttribute ? "&#10;" : "";
    default:
        return "";
    }
}

} // namespace

void XmlCopyRule::writeAttributes(XmlWriter& writer, XmlNode element) const {
    for (const XmlAttribute each : element.attributes())
        writer.attribute(each.name(), each.value().data());
}

XmlWriter::XmlWriter(ByteSink& sink) : sink_(sink) {
    block_.reserve(blockSize);
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

void XmlWriter::begin(std::string_view name) {
    open(name, true);
}

void XmlWriter::beginLike(XmlNode element, const XmlCopyRule& rule) {
    open(element.name(), mayIndent(element, rule));
}

/// True when white space between the children means nothing: the same condition under which it was
/// dropped.
bool XmlWriter::mayIndent(XmlNode element, const XmlCopyRule& rule) {
    if (element.holdsText()) return false;
    bool hasElements = false;
    for (const XmlNode child : element.children()) {
        const XmlKind kind = child.kind();
        if (kind == XmlKind::text || kind == XmlKind::cdata) return false;
        hasElements |= kind == XmlKind::element && !rule.leavesOut(child);
    }
    return hasElements;
}

void XmlWriter::open(std::string_view name, bool isIndented) {
    const bool insideText = !open_.empty() && !open_.back().isIndented;
    startContent();
    put('<');
    put(name);
    open_.push_back({name, isIndented && !insideText});
}

void XmlWriter::attribute(std::string_view name, const char* value) {
    assert(!open_.empty() && !open_.back().hasContent);
    put(' ');
    put(name);
    put("=\"");
    putEscaped(value, Escaping::attribute);
    put('"');
}

void XmlWriter::end() {
    assert(!open_.empty());
    const Open element = open_.back();
    open_.pop_back();
    if (!element.hasContent) {
        put("/>");
        return;
    }
    if (element.isIndented) newLine(open_.size());
    put("</");
    put(element.name);
    put('>');
}

void XmlWriter::closeStartTag() {
    if (open_.empty() || open_.back().hasContent) return;
    put('>');
    open_.back().hasContent = true;
}

void XmlWriter::startContent() {
    closeStartTag();
    if (open_.empty() || open_.back().isIndented) newLine(open_.size());
}

void XmlWriter::newLine(std::size_t depth) {
    // Not deeper, or a small document of many levels becomes a large one of spaces.
    constexpr std::size_t deepest = 32;
    put('\n');
    for (std::size_t i = 0; i < std::min(depth, deepest); ++i)
        put("    ");
}

void XmlWriter::node(XmlNode node, const XmlCopyRule& rule) {
    if (!node.isElement()) return leaf(node);
    if (rule.leavesOut(node)) return;
    beginLike(node, rule);
    rule.writeAttributes(*this, node);
    for (const XmlNode child : node.children())
        this->node(child, rule);
    end();
}

void XmlWriter::leaf(XmlNode node) {
    startContent();
    switch (node.kind()) {
    case XmlKind::text:
        putEscaped(node.value().data(), Escaping::text);
        break;
    case XmlKind::cdata:
        put("<![CDATA[");
        put(node.value());
        put("]]>");
        break;
    case XmlKind::comment:
        put("<!--");
        put(node.value());
        put("-->");
        break;
    case XmlKind::instruction:
        put("<?");
        put(node.name());
        if (!node.value().empty()) put(' ');
        put(node.value());
        put("?>");
        break;
    case XmlKind::document:
    case XmlKind::element:
        assert(false && "not a leaf");
    }
}

void XmlWriter::finish() {
    assert(open_.empty());
    put('\n');
    flush();
}

void XmlWriter::put(std::string_view piece) {
    if (block_.size() + piece.size() > blockSize) flush();
    if (piece.size() > blockSize)
        sink_.write(piece);
    else
        block_ += piece;
}

void XmlWriter::flush() {
    sink_.write(block_);
    block_.clear();
}

void XmlWriter::putEscaped(const char* value, Escaping escaping) {
    while (true) {
        // All that `escape` has anything to say about.
        const std::size_t plain = std::strcspn(value, "&<>\"\r\n\t");
        put({value, plain});
        value += plain;
        if (*value == '\0') return;
        const std::string_view replacement = escape(*value, escaping == Escaping::attribute);
        if (replacement.empty())
            put(*value);
        else
            put(replacement);
        ++value;
    }
}

} // namespace shotweaver
