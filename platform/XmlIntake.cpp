#include "platform/XmlIntake.h"

#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <expat.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace shotweaver {

namespace {

// Where the parser is. Expat 2.9 has these in 64 bits and deprecates the narrower ones.
#if XML_MAJOR_VERSION > 2 || (XML_MAJOR_VERSION == 2 && XML_MINOR_VERSION >= 9)
constexpr auto currentLine = XML_GetCurrentLineNumber64;
constexpr auto currentColumn = XML_GetCurrentColumnNumber64;
constexpr auto currentByte = XML_GetCurrentByteIndex64;
constexpr auto currentByteCount = XML_GetCurrentByteCount64;
#else
constexpr auto currentLine = XML_GetCurrentLineNumber;
constexpr auto currentColumn = XML_GetCurrentColumnNumber;
constexpr auto currentByte = XML_GetCurrentByteIndex;
constexpr auto currentByteCount = XML_GetCurrentByteCount;
#endif

constexpr std::size_t blockSize = std::size_t{1} << 18U;

// What entities may add to a document: anything up to the threshold, then at most so many times
// the document's own size. Exports hold none at all.
constexpr float maximumAmplification = 4;
constexpr unsigned long long amplificationThreshold = 1U << 20U;

bool isWhiteSpace(const std::string& text) {
    return std::strspn(text.c_str(), " \t\r\n") == text.size();
}

/// True for a reference to a character and to one of the five entities of XML itself.
bool needsNoDeclaration(std::string_view reference) {
    static constexpr std::array<std::string_view, 5> entities{"&amp;", "&lt;", "&gt;", "&quot;",
                                                              "&apos;"};
    return reference.starts_with("&#") ||
           std::find(entities.begin(), entities.end(), reference) != entities.end();
}

/// Builds the tree from the parser's events.
class XmlIntake {
  public:
    explicit XmlIntake(const XmlVocabulary& vocabulary);

    std::unique_ptr<const XmlDocument> parse(ByteSource& source);

  private:
    /// White space seen in an element, kept aside until it is known whether it is content.
    struct PendingSpace {
        XmlNode previous;
        std::size_t start; // in `space_`, up to the next one's start
    };

    struct OpenElement {
        XmlNode node;
        bool keepsSpace;
        std::size_t firstPending;
        XmlNode last = {}; // of its children so far
        bool hasElements = false;
    };

    void setHandlers();
    void setEntityHandlers();
    [[noreturn]] void failParsing();

    void startElement(const char* name, const char** attributes);
    void endElement();
    void comment(const char* text);
    void processingInstruction(const char* target, const char* data);
    void endCdata();

    void flushText();
    void keepPending(OpenElement& element);
    void dropPending(const OpenElement& element);
    XmlNode append(XmlKind kind, std::string_view name, std::string_view value = {});
    std::size_t waiting(std::size_t total) const;
    std::size_t fill(ByteSource& source, std::size_t count);

    void refuseReferencesInTag();
    [[noreturn]] static void refuseOutside(std::string_view what);

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
    std::unique_ptr<XmlDocument> document_;
    std::vector<OpenElement> open_; // from the document itself inward
    std::vector<PendingSpace> pending_;
    std::string space_;
    std::string text_;
    bool inDoctype_ = false;
    // Declarations may lie outside of the document. The parser then drops a reference in an
    // attribute that nothing here declares, and does not report it.
    bool mayMissDeclarations_ = false;
    std::string tag_; // as it stands in the document
    std::exception_ptr failure_;
};

XmlIntake::XmlIntake(const XmlVocabulary& vocabulary)
    : parser_(XML_ParserCreate(nullptr), &XML_ParserFree),
      document_(std::make_unique<XmlDocument>(vocabulary)), open_{{document_->root(), false, 0}} {
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
            guarded(self, [](XmlIntake& intake) { intake.inDoctype_ = true; });
        },
        [](void* self) { guarded(self, [](XmlIntake& intake) { intake.inDoctype_ = false; }); });
}

void XmlIntake::setEntityHandlers() {
    XML_SetNotStandaloneHandler(parser_.get(), [](void* self) {
        static_cast<XmlIntake*>(self)->mayMissDeclarations_ = true;
        return static_cast<int>(XML_STATUS_OK);
    });
    // The parser bounds neither what default values add nor the time that each tag takes when its
    // element has many declared attributes.
    XML_SetAttlistDeclHandler(
        parser_.get(), [](void* self, const char*, const char*, const char*, const char*, int) {
            guarded(self, [](XmlIntake&) {
                throw PlatformError("The XML's document type declares attributes. Export XML again "
                                    "from Final Cut.");
            });
        });
    XML_SetSkippedEntityHandler(parser_.get(), [](void* self, const char* name, int isParameter) {
        guarded(self, [&](XmlIntake&) {
            if (isParameter == 0) refuseOutside(fmt::format("&{};", name));
        });
    });
    // Without this handler the parser would drop a reference to an outside entity silently. It
    // refuses and reads nothing.
    XML_SetExternalEntityRefHandler(parser_.get(), [](XML_Parser parser, const char*, const char*,
                                                      const char* systemID, const char*) {
        guarded(XML_GetUserData(parser),
                [&](XmlIntake&) { refuseOutside(systemID == nullptr ? "" : systemID); });
        return static_cast<int>(XML_STATUS_ERROR);
    });
}

std::unique_ptr<const XmlDocument> XmlIntake::parse(ByteSource& source) {
    std::size_t total = 0;
    bool isAtEnd = false;
    while (!isAtEnd) {
        const std::size_t wanted = std::max(blockSize, waiting(total));
        const std::size_t count = fill(source, wanted);
        total += count;
        isAtEnd = count < wanted;
        const XML_Status status =
            XML_ParseBuffer(parser_.get(), static_cast<int>(count), isAtEnd ? XML_TRUE : XML_FALSE);
        if (failure_) std::rethrow_exception(failure_);
        if (status != XML_STATUS_OK) failParsing();
    }
    return std::move(document_);
}

/// Bytes of `total` that the parser has been given and not used up yet: the beginning of a tag, a
/// comment or the like. It reads them again with the next block, which is therefore as large as
/// they are, or a long one would take time with the square of its length.
std::size_t XmlIntake::waiting(std::size_t total) const {
    const std::int64_t used =
        currentByte(parser_.get()) + static_cast<std::int64_t>(currentByteCount(parser_.get()));
    constexpr std::size_t most = std::size_t{1} << 30U; // the parser counts in int
    return used < 0 ? 0 : std::min(most, total - static_cast<std::size_t>(used));
}

/// Fills the parser's buffer with `count` bytes, or with fewer at the source's end.
std::size_t XmlIntake::fill(ByteSource& source, std::size_t count) {
    auto* const block = static_cast<char*>(XML_GetBuffer(parser_.get(), static_cast<int>(count)));
    if (block == nullptr) throw std::bad_alloc();
    std::size_t filled = 0;
    while (filled < count) {
        const std::size_t more = source.read(block + filled, count - filled);
        if (more == 0) break;
        filled += more;
    }
    return filled;
}

void XmlIntake::failParsing() {
    XML_Parser parser = parser_.get();
    throw PlatformError(fmt::format("The XML could not be read: {} at line {}, column {}.",
                                    XML_ErrorString(XML_GetErrorCode(parser)), currentLine(parser),
                                    currentColumn(parser) + 1));
}

XmlNode XmlIntake::append(XmlKind kind, std::string_view name, std::string_view value) {
    OpenElement& parent = open_.back();
    return parent.last = document_->insert(parent.node, parent.last, kind, name, value);
}

void XmlIntake::startElement(const char* name, const char** attributes) {
    flushText();
    if (open_.size() > maximumXmlDepth)
        throw PlatformError(
            fmt::format("The XML is nested more than {} levels deep.", maximumXmlDepth));
    if (mayMissDeclarations_ && attributes[0] != nullptr) refuseReferencesInTag();

    const XmlNode element = append(XmlKind::element, name);
    for (; attributes[0] != nullptr; attributes += 2)
        document_->addAttribute(attributes[0], attributes[1]);
    open_.back().hasElements = true;
    open_.push_back({element, element.holdsText(), pending_.size()});
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
        const XmlNode node = document_->insert(element.node, space.previous, XmlKind::text, {},
                                               std::string_view(space_).substr(space.start));
        if (space.previous == element.last) element.last = node;
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
    OpenElement& element = open_.back();
    const bool isSpace = isWhiteSpace(text_);
    if (isSpace && !element.keepsSpace) {
        pending_.push_back({element.last, space_.size()});
        space_ += text_;
    } else {
        if (!element.keepsSpace) keepPending(element);
        append(XmlKind::text, {}, text_);
    }
    text_.clear();
}

void XmlIntake::endCdata() {
    OpenElement& element = open_.back();
    if (!element.keepsSpace) keepPending(element);
    append(XmlKind::cdata, {}, text_);
    text_.clear();
}

void XmlIntake::comment(const char* text) {
    if (inDoctype_) return;
    flushText();
    append(XmlKind::comment, {}, text);
}

void XmlIntake::processingInstruction(const char* target, const char* data) {
    if (inDoctype_) return;
    flushText();
    append(XmlKind::instruction, target, data);
}

/// The parser reports attributes with their references resolved. A default handler gets the tag as
/// it stands in the document, in UTF-8.
void XmlIntake::refuseReferencesInTag() {
    tag_.clear();
    XML_SetDefaultHandlerExpand(parser_.get(), [](void* self, const char* text, int length) {
        guarded(self, [&](XmlIntake& intake) {
            intake.tag_.append(text, static_cast<std::size_t>(length));
        });
    });
    XML_DefaultCurrent(parser_.get());
    XML_SetDefaultHandlerExpand(parser_.get(), nullptr);

    const std::string_view tag = tag_;
    for (std::size_t at = tag.find('&'); at != std::string_view::npos; at = tag.find('&', at + 1)) {
        const std::string_view reference = tag.substr(at, tag.find(';', at) + 1 - at);
        if (!needsNoDeclaration(reference)) refuseOutside(reference);
    }
}

void XmlIntake::refuseOutside(std::string_view what) {
    constexpr std::size_t shownCharacters = 80;
    throw PlatformError(fmt::format("The XML refers to “{}”, which lies outside of it. Export XML "
                                    "again from Final Cut.",
                                    firstCharacters(what, shownCharacters)));
}

} // namespace

std::unique_ptr<const XmlDocument> parseXml(ByteSource& source, const XmlVocabulary& vocabulary) {
    return XmlIntake(vocabulary).parse(source);
}

std::unique_ptr<const XmlDocument> parseXml(std::string_view bytes,
                                            const XmlVocabulary& vocabulary) {
    MemorySource source(bytes);
    return parseXml(source, vocabulary);
}

} // namespace shotweaver
