#include "platform/XmlWriter.h"

#include "platform/XmlIntake.h"

#include <cassert>
#include <cstddef>
#include <cstring>

namespace shotweaver {

namespace {

constexpr std::size_t indentWidth = 4;

enum class Escaping { attribute, text };

/// What stands for a character, or nothing when it stands for itself.
std::string_view escape(char c, Escaping escaping) {
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
        return escaping == Escaping::attribute ? "&quot;" : "";
    case '\t':
        return escaping == Escaping::attribute ? "&#9;" : "";
    case '\n':
        return escaping == Escaping::attribute ? "&#10;" : "";
    default:
        return "";
    }
}

void appendEscaped(std::string& text, const char* value, Escaping escaping) {
    while (true) {
        // All that `escape` has anything to say about.
        const std::size_t plain = std::strcspn(value, "&<>\"\r\n\t");
        text.append(value, plain);
        value += plain;
        if (*value == '\0') return;
        const std::string_view replacement = escape(*value, escaping);
        if (replacement.empty())
            text += *value;
        else
            text += replacement;
        ++value;
    }
}

/// True when white space between the children means nothing: the same condition under which it was
/// dropped.
bool mayIndent(pugi::xml_node element) {
    if (holdsText(element.name())) return false;
    bool hasElements = false;
    for (const pugi::xml_node child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) return false;
        hasElements |= child.type() == pugi::node_element;
    }
    return hasElements;
}

} // namespace

XmlWriter::XmlWriter(std::size_t expectedSize) {
    text_.reserve(expectedSize);
    text_ = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
}

void XmlWriter::begin(std::string_view name) {
    open(name, true);
}

void XmlWriter::beginLike(pugi::xml_node element) {
    open(element.name(), mayIndent(element));
}

void XmlWriter::open(std::string_view name, bool isIndented) {
    const bool insideText = !open_.empty() && !open_.back().isIndented;
    startContent();
    text_ += '<';
    text_ += name;
    open_.push_back({name, isIndented && !insideText});
}

void XmlWriter::attribute(std::string_view name, const char* value) {
    assert(!open_.empty() && !open_.back().hasContent);
    text_ += ' ';
    text_ += name;
    text_ += "=\"";
    appendEscaped(text_, value, Escaping::attribute);
    text_ += '"';
}

void XmlWriter::end() {
    assert(!open_.empty());
    const Open element = open_.back();
    open_.pop_back();
    if (!element.hasContent) {
        text_ += "/>";
        return;
    }
    if (element.isIndented) newLine(open_.size());
    text_ += "</";
    text_ += element.name;
    text_ += '>';
}

void XmlWriter::closeStartTag() {
    if (open_.empty() || open_.back().hasContent) return;
    text_ += '>';
    open_.back().hasContent = true;
}

void XmlWriter::startContent() {
    closeStartTag();
    if (open_.empty() || open_.back().isIndented) newLine(open_.size());
}

void XmlWriter::newLine(std::size_t depth) {
    text_ += '\n';
    text_.append(depth * indentWidth, ' ');
}

void XmlWriter::node(pugi::xml_node node) {
    if (node.type() != pugi::node_element) {
        leaf(node);
        return;
    }
    beginLike(node);
    for (const pugi::xml_attribute each : node.attributes())
        attribute(each.name(), each.value());
    for (const pugi::xml_node child : node.children())
        this->node(child);
    end();
}

void XmlWriter::leaf(pugi::xml_node node) {
    startContent();
    switch (node.type()) {
    case pugi::node_pcdata:
        appendEscaped(text_, node.value(), Escaping::text);
        break;
    case pugi::node_cdata:
        text_.append("<![CDATA[").append(node.value()).append("]]>");
        break;
    case pugi::node_comment:
        text_.append("<!--").append(node.value()).append("-->");
        break;
    case pugi::node_pi:
        text_.append("<?").append(node.name());
        if (*node.value() != '\0') text_.append(" ").append(node.value());
        text_ += "?>";
        break;
    default:
        assert(false && "a parsed document holds no other kind of node");
    }
}

std::string XmlWriter::take() {
    assert(open_.empty());
    text_ += '\n';
    return std::move(text_);
}

} // namespace shotweaver
