#pragma once

#include "platform/XmlDocument.h"

#include <string>
#include <string_view>

namespace shotweaver::test {

/// `special` are the characters that cannot stand there as they are.
inline std::string escaped(std::string_view text, std::string_view special) {
    std::string result;
    for (const char c : text) {
        if (special.find(c) == std::string_view::npos)
            result += c;
        else
            result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : "&quot;";
    }
    return result;
}

/// What a tree holds from a node downward, with nothing added.
inline std::string rawText(XmlNode node) {
    const std::string value(node.value());
    std::string content;
    for (const XmlNode child : node.children())
        content += rawText(child);
    std::string tag(node.name());
    switch (node.kind()) {
    case XmlKind::document:
        return content;
    case XmlKind::text:
        return escaped(value, "&<>");
    case XmlKind::cdata:
        return "<![CDATA[" + value + "]]>";
    case XmlKind::comment:
        return "<!--" + value + "-->";
    case XmlKind::instruction:
        return "<?" + tag + (value.empty() ? "" : " ") + value + "?>";
    case XmlKind::element:
        break;
    }
    const std::string end = "</" + tag + ">";
    for (const XmlAttribute each : node.attributes())
        tag += " " + std::string(each.name()) + "=\"" + escaped(each.value(), "&<\"") + "\"";
    return content.empty() ? "<" + tag + "/>" : "<" + tag + ">" + content + end;
}

} // namespace shotweaver::test
