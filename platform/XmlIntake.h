#pragma once

#include "platform/ByteSource.h"
#include "platform/XmlDocument.h"

#include <memory>
#include <string_view>

namespace shotweaver {

/// Elements may be nested this deep; a document nested deeper is refused.
inline constexpr int maximumXmlDepth = 1000;

/// Parses an XML 1.0 document in UTF-8, UTF-16, ISO 8859-1 or US-ASCII.
///
/// Kept: elements, attributes in their order, text, CDATA sections, comments and processing
/// instructions. Not kept: the XML declaration and the document type. White-space-only text is kept
/// where it can be content: not between the children of an element that has child elements and no
/// other text, unless the vocabulary says that it holds text.
///
/// Nothing outside of the bytes is ever read. Throws `PlatformError` when the document is not
/// well-formed (with the parser's reason, line and column), when it refers to something that lies
/// outside of it, when it declares attributes, when its entities expand to far more than the
/// document itself, and when it is nested deeper than `maximumXmlDepth`. Where an outside document
/// may declare entities, a tag may refer to characters and to XML's own five entities only.
std::unique_ptr<const XmlDocument> parseXml(ByteSource& source, const XmlVocabulary& vocabulary);
std::unique_ptr<const XmlDocument> parseXml(std::string_view bytes,
                                            const XmlVocabulary& vocabulary);

} // namespace shotweaver
