#pragma once

#include "platform/ByteSource.h"

#include <pugixml.hpp>

#include <memory>
#include <string_view>

namespace shotweaver {

/// A parsed document. The node handles into it stay valid as long as it lives.
using XmlDocument = std::unique_ptr<pugi::xml_document>;

/// Elements may be nested this deep; a document nested deeper is refused.
inline constexpr int maximumXmlDepth = 1000;

/// True for the names of elements whose white space is always content.
using TextRule = bool (*)(const char* elementName);

/// Parses an XML 1.0 document in UTF-8, UTF-16, ISO 8859-1 or US-ASCII.
///
/// Kept: elements, attributes in their order, text, CDATA sections, comments and processing
/// instructions. Not kept: the XML declaration and the document type. White-space-only text is kept
/// where it can be content: not between the children of an element that has child elements and no
/// other text, unless `holdsText` is true of its name.
///
/// Nothing outside of the bytes is ever read. Throws `PlatformError` when the document is not
/// well-formed (with the parser's reason, line and column), when it refers to something that lies
/// outside of it, when it declares attributes, when its entities expand to far more than the
/// document itself, and when it is nested deeper than `maximumXmlDepth`. Where an outside document
/// may declare entities, a tag may refer to characters and to XML's own five entities only.
XmlDocument parseXml(ByteSource& source, TextRule holdsText);
XmlDocument parseXml(std::string_view bytes, TextRule holdsText);

} // namespace shotweaver
