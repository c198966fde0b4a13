#include "platform/XmlIntake.h"

#include "platform/PlatformError.h"

#include <expat.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <exception>
#include <functional>
#include <new>
#include <set>
#include <string>
#include <vector>

namespace shotweaver {

namespace {

constexpr int blockSize = 1 << 18;

// What entities may add to a document: anything up to the threshold, then at most so many times
// the document's own size. Exports hold none at all.
constexpr float maximumAmplification = 4;
constexpr unsigned long long amplificationThreshold = 1U << 20U;

bool isWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

constexpr const char* outsideReference =
    "The XML refers to “&{};”, which only another document could explain. Export XML again from "
    "Final Cut.";

/// The names in the general entity references of a piece of markup.
///     given  "<a b='&x; &#38;' c='&y;'>"     gives  "x", "y"
std::vector<std::string> referencedEntities(std::string_view markup) {
    std::vector<std::string> names;
    std::size_t at = markup.find('&');
    while (at != std::string_view::npos) {
        const std::size_t end = markup.find(';', at);
        if (end == std::string_view::npos) break;
        const std::string_view name = markup.substr(at + 1, end - at - 1);
        if (!name.empty() && name.front() != '#') names.emplace_back(name);
        at = markup.find('&', at + 1);
    }
    return names;
}

/// Builds the tree from the parser's events.
class XmlIntake {
  public:
    XmlIntake();

    XmlDocument parse(ByteSource& source);

  private:
    /// White space seen in an element, kept aside until it is known whether it is content.
    struct PendingSpace {
        pugi::xml_node previous;
        std::size_t start; // in `space_`, up to the next one's start
    };

    struct OpenElement {
        pugi::xml_node node;
        bool keepsSpace;
        bool hasElements = false;
        std::size_t firstPending;
    };

    void setHandlers();
    void setEntityHandlers();
    [[noreturn]] void failParsing();

    void startElement(const char* name, const char** attributes);
    void endElement();
    void comment(const char* text);
    void processingInstruction(const char* target, const char* data);
    void endCdata();
    void startDoctype();
    void endDoctype();

    void flushText();
    void keepPending(OpenElement& element);
    void dropPending(const OpenElement& element);
    pugi::xml_node append(pugi::xml_node_type type);
    pugi::xml_node parent() { return open_.empty() ? *document_ : open_.back().node; }

    std::string_view currentMarkup() const;
    std::string_view inASCII(std::string_view raw);
    void refuseOutsideReferences(std::string_view markup);
    void refuse(const std::string& sentence);

    /// Runs a handler's body. Nothing may be thrown through the parser, which is C: an exception is
    /// kept, ends the parse and is thrown again by `parse`.
    template <class Body>
    static void guarded(void* self, Body body) {
        auto& intake = *static_cast<XmlIntake*>(self);
        if (intake.failure_) return;
        try {
            body(intake);
        } catch (...) {
            intake.failure_ = std::current_exception();
            XML_StopParser(intake.parser_.get(), XML_FALSE);
        }
    }

    std::unique_ptr<XML_ParserStruct, decltype(&XML_ParserFree)> parser_;
    XmlDocument document_ = std::make_unique<pugi::xml_document>();
    std::vector<OpenElement> open_;
    std::vector<PendingSpace> pending_;
    std::string space_;
    std::string text_;
    bool inDoctype_ = false;
    // The document up to its root element, which holds the document type.
    std::string prolog_;
    bool inProlog_ = true;
    std::size_t doctypeStart_ = 0;
    // Declarations may stand outside of the document, so the parser no longer reports an
    // undeclared entity in an attribute: it drops it.
    bool mayMissDeclarations_ = false;
    std::set<std::string, std::less<>> declaredEntities_{"amp", "lt", "gt", "quot", "apos"};
    std::string converted_;
    std::exception_ptr failure_;
};

XmlIntake::XmlIntake() : parser_(XML_ParserCreate(nullptr), &XML_ParserFree) {
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser_.get(), maximumAmplification);
    XML_SetBillionLaughsAttackProtectionActivationThreshold(parser_.get(), amplificationThreshold);
    setHandlers();
    setEntityHandlers();
}

void XmlIntake::setHandlers() {
    XML_SetElementHandler(
        parser_.get(),
        [](void* self, const char* name, const char** attributes) {
            guarded(self, [&](XmlIntake& intake) { intake.startElement(name, attributes); });
        },
        [](void* self, const char*) {
            guarded(self, [](XmlIntake& intake) { intake.endElement(); });
        });
    XML_SetCharacterDataHandler(parser_.get(), [](void* self, const char* text, int length) {
        guarded(self, [&](XmlIntake& intake) {
            intake.text_.append(text, static_cast<std::size_t>(length));
        });
    });
    XML_SetCdataSectionHandler(
        parser_.get(),
        [](void* self) { guarded(self, [](XmlIntake& intake) { intake.flushText(); }); },
        [](void* self) { guarded(self, [](XmlIntake& intake) { intake.endCdata(); }); });
    XML_SetCommentHandler(parser_.get(), [](void* self, const char* text) {
        guarded(self, [&](XmlIntake& intake) { intake.comment(text); });
    });
    XML_SetProcessingInstructionHandler(
        parser_.get(), [](void* self, const char* target, const char* data) {
            guarded(self, [&](XmlIntake& intake) { intake.processingInstruction(target, data); });
        });
    XML_SetDoctypeDeclHandler(
        parser_.get(),
        [](void* self, const char*, const char*, const char*, int) {
            guarded(self, [](XmlIntake& intake) { intake.startDoctype(); });
        },
        [](void* self) { guarded(self, [](XmlIntake& intake) { intake.endDoctype(); }); });
}

void XmlIntake::setEntityHandlers() {
    XML_SetNotStandaloneHandler(parser_.get(), [](void* self) {
        static_cast<XmlIntake*>(self)->mayMissDeclarations_ = true;
        return static_cast<int>(XML_STATUS_OK);
    });
    XML_SetEntityDeclHandler(parser_.get(),
                             [](void* self, const char* name, int isParameter, const char* value,
                                int, const char*, const char*, const char*, const char*) {
                                 guarded(self, [&](XmlIntake& intake) {
                                     if (isParameter == 0 && value != nullptr)
                                         intake.declaredEntities_.emplace(name);
                                 });
                             });
    XML_SetSkippedEntityHandler(parser_.get(), [](void* self, const char* name, int isParameter) {
        guarded(self, [&](XmlIntake& intake) {
            if (isParameter == 0) intake.refuse(fmt::format(outsideReference, name));
        });
    });
    // Without this handler the parser would drop a reference to an outside entity silently. It
    // refuses and reads nothing.
    XML_SetExternalEntityRefHandler(parser_.get(), [](XML_Parser parser, const char* context,
                                                      const char*, const char*, const char*) {
        guarded(XML_GetUserData(parser), [&](XmlIntake& intake) {
            intake.refuse(fmt::format(outsideReference, context == nullptr ? "" : context));
        });
        return static_cast<int>(XML_STATUS_ERROR);
    });
}

XmlDocument XmlIntake::parse(ByteSource& source) {
    std::size_t count = 0;
    do {
        auto* const block = static_cast<char*>(XML_GetBuffer(parser_.get(), blockSize));
        if (block == nullptr) throw std::bad_alloc();
        count = source.read(block, blockSize);
        if (inProlog_) prolog_.append(block, count);
        const XML_Status status = XML_ParseBuffer(parser_.get(), static_cast<int>(count),
                                                  count == 0 ? XML_TRUE : XML_FALSE);
        if (failure_) std::rethrow_exception(failure_);
        if (status != XML_STATUS_OK) failParsing();
    } while (count > 0);
    return std::move(document_);
}

void XmlIntake::failParsing() {
    XML_Parser parser = parser_.get();
    throw PlatformError(fmt::format("The XML could not be read: {} at line {}, column {}.",
                                    XML_ErrorString(XML_GetErrorCode(parser)),
                                    XML_GetCurrentLineNumber(parser),
                                    XML_GetCurrentColumnNumber(parser) + 1));
}

void XmlIntake::refuse(const std::string& sentence) {
    throw PlatformError(sentence);
}

pugi::xml_node XmlIntake::append(pugi::xml_node_type type) {
    const pugi::xml_node node = parent().append_child(type);
    if (!node) throw std::bad_alloc();
    return node;
}

void XmlIntake::startElement(const char* name, const char** attributes) {
    flushText();
    inProlog_ = false;
    if (open_.size() >= maximumXmlDepth)
        refuse(fmt::format("The XML is nested more than {} levels deep.", maximumXmlDepth));
    if (mayMissDeclarations_ && attributes[0] != nullptr) {
        refuseOutsideReferences(inASCII(currentMarkup()));
    }

    pugi::xml_node node = append(pugi::node_element);
    node.set_name(name);
    for (; attributes[0] != nullptr; attributes += 2)
        node.append_attribute(attributes[0]).set_value(attributes[1]);
    if (!open_.empty()) open_.back().hasElements = true;
    open_.push_back({node, holdsText(name), false, pending_.size()});
}

void XmlIntake::endElement() {
    flushText();
    OpenElement& element = open_.back();
    if (!element.hasElements) keepPending(element);
    dropPending(element);
    open_.pop_back();
}

/// Puts the element's white space where it stood: it is content after all.
void XmlIntake::keepPending(OpenElement& element) {
    while (pending_.size() > element.firstPending) {
        const PendingSpace& space = pending_.back();
        pugi::xml_node node =
            space.previous ? element.node.insert_child_after(pugi::node_pcdata, space.previous)
                           : element.node.prepend_child(pugi::node_pcdata);
        if (!node) throw std::bad_alloc();
        node.set_value(space_.c_str() + space.start);
        space_.resize(space.start);
        pending_.pop_back();
    }
    element.keepsSpace = true;
}

void XmlIntake::dropPending(const OpenElement& element) {
    if (pending_.size() == element.firstPending) return;
    space_.resize(pending_[element.firstPending].start);
    pending_.resize(element.firstPending);
}

/// Puts the text gathered so far into the tree. The parser hands text over in pieces.
void XmlIntake::flushText() {
    if (text_.empty()) return;
    if (!open_.empty()) {
        OpenElement& element = open_.back();
        const bool isSpace = std::all_of(text_.begin(), text_.end(), isWhiteSpace);
        if (isSpace && !element.keepsSpace) {
            pending_.push_back({element.node.last_child(), space_.size()});
            space_ += text_;
        } else {
            if (!element.keepsSpace) keepPending(element);
            append(pugi::node_pcdata).set_value(text_.c_str());
        }
    }
    text_.clear();
}

void XmlIntake::endCdata() {
    OpenElement& element = open_.back();
    if (!element.keepsSpace) keepPending(element);
    append(pugi::node_cdata).set_value(text_.c_str());
    text_.clear();
}

void XmlIntake::comment(const char* text) {
    if (inDoctype_) return;
    flushText();
    append(pugi::node_comment).set_value(text);
}

void XmlIntake::processingInstruction(const char* target, const char* data) {
    if (inDoctype_) return;
    flushText();
    pugi::xml_node node = append(pugi::node_pi);
    node.set_name(target);
    node.set_value(data);
}

void XmlIntake::startDoctype() {
    inDoctype_ = true;
    doctypeStart_ = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
}

void XmlIntake::endDoctype() {
    inDoctype_ = false;
    if (!mayMissDeclarations_) return;
    // Values of entities and defaults of attributes: a reference in them is dropped like one in an
    // attribute.
    const auto end = static_cast<std::size_t>(XML_GetCurrentByteIndex(parser_.get()));
    refuseOutsideReferences(
        inASCII(std::string_view(prolog_).substr(doctypeStart_, end - doctypeStart_)));
}

/// What the parser is reporting, as it stands in the document.
std::string_view XmlIntake::currentMarkup() const {
    int offset = 0;
    int size = 0;
    const char* const context = XML_GetInputContext(parser_.get(), &offset, &size);
    if (context == nullptr) return {};
    const int count = std::min(XML_GetCurrentByteCount(parser_.get()), size - offset);
    return {context + offset, static_cast<std::size_t>(count)};
}

/// Markup in an encoding that keeps ASCII, as it is; of UTF-16, its ASCII characters with a "?" for
/// every other.
std::string_view XmlIntake::inASCII(std::string_view raw) {
    // UTF-16 is told by its first two bytes: a byte-order mark, or a "<" with its zero byte.
    const std::string_view head = std::string_view(prolog_).substr(0, 2);
    const bool isBigEndian = head == "\xFE\xFF" || head.starts_with('\0');
    const bool isLittleEndian = head == "\xFF\xFE" || head.ends_with('\0');
    if (!isBigEndian && !isLittleEndian) return raw;

    const std::size_t high = isBigEndian ? 0 : 1;
    converted_.clear();
    for (std::size_t at = 0; at + 1 < raw.size(); at += 2)
        converted_ += raw[at + high] == '\0' ? raw[at + 1 - high] : '?';
    return converted_;
}

void XmlIntake::refuseOutsideReferences(std::string_view markup) {
    for (const std::string& name : referencedEntities(markup)) {
        if (!declaredEntities_.contains(name)) refuse(fmt::format(outsideReference, name));
    }
}

} // namespace

bool holdsText(std::string_view elementName) {
    static constexpr std::array<std::string_view, 7> names{
        "text", "text-style", "note", "data", "bookmark", "string", "reserved"};
    return std::find(names.begin(), names.end(), elementName) != names.end();
}

XmlDocument parseXml(ByteSource& source) {
    return XmlIntake().parse(source);
}

XmlDocument parseXml(std::string_view bytes) {
    MemorySource source(bytes);
    return parseXml(source);
}

} // namespace shotweaver
