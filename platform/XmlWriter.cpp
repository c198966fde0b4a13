#include "platform/XmlWriter.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstring>

namespace shotweaver {

namespace {

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

XmlWriter::XmlWriter(TextRule holdsText, std::size_t expectedSize) : holdsText_(holdsText) {
    text_.reserve(expectedSize);
    put("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
}

void XmlWriter::begin(std::string_view name) {
    open(name, true);
}

void XmlWriter::beginLike(pugi::xml_node element) {
    open(element.name(), mayIndent(element));
}

/// True when white space between the children means nothing: the same condition under which it was
/// dropped.
bool XmlWriter::mayIndent(pugi::xml_node element) const {
    if (holdsText_(element.name())) return false;
    bool hasElements = false;
    for (auto child = element.first_child(); child; child = child.next_sibling()) {
        const pugi::xml_node_type type = child.type();
        if (type == pugi::node_pcdata || type == pugi::node_cdata) return false;
        hasElements |= type == pugi::node_element;
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

void XmlWriter::node(pugi::xml_node node) {
    if (node.type() != pugi::node_element) {
        leaf(node);
        return;
    }
    beginLike(node);
    for (auto each = node.first_attribute(); each; each = each.next_attribute())
        attribute(each.name(), each.value());
    for (auto child = node.first_child(); child; child = child.next_sibling())
        this->node(child);
    end();
}

void XmlWriter::leaf(pugi::xml_node node) {
    startContent();
    switch (node.type()) {
    case pugi::node_pcdata:
        putEscaped(node.value(), Escaping::text);
        break;
    case pugi::node_cdata:
        put("<![CDATA[");
        put(node.value());
        put("]]>");
        break;
    case pugi::node_comment:
        put("<!--");
        put(node.value());
        put("-->");
        break;
    case pugi::node_pi:
        put("<?");
        put(node.name());
        if (*node.value() != '\0') put(' ');
        put(node.value());
        put("?>");
        break;
    default:
        assert(false && "a parsed document holds no other kind of node");
    }
}

std::string XmlWriter::take() {
    assert(open_.empty());
    put('\n');
    return std::move(text_);
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
