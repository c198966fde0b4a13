#include "platform/XmlIntake.h"

#include "platform/PlatformError.h"
#include "platform/Text.h"

#include <expat.h>
#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <map>
#include <memory>
#include <new>
#include <set>
#include <string>
#include <vector>

namespace shotweaver {

namespace {

// Where the parser is. Expat 2.9 has these in 64 bits and deprecates the narrower ones.
#if XML_MAJOR_VERSION > 2 || (XML_MAJOR_VERSION == 2 && XML_MINOR_VERSION >= 9)
constexpr auto currentLine = XML_GetCurrentLineNumber64;
constexpr auto currentColumn = XML_GetCurrentColumnNumber64;
constexpr auto currentByteCount = XML_GetCurrentByteCount64;
constexpr auto currentInput = XML_GetInputContext64;
using InputOffset = std::int64_t;
using InputSize = std::uint64_t;
#else
constexpr auto currentLine = XML_GetCurrentLineNumber;
constexpr auto currentColumn = XML_GetCurrentColumnNumber;
constexpr auto currentByteCount = XML_GetCurrentByteCount;
constexpr auto currentInput = XML_GetInputContext;
using InputOffset = int;
using InputSize = int;
#endif

constexpr int blockSize = 1 << 18;

// What entities may add to a document: anything up to the threshold, then at most so many times
// the document's own size. Exports hold none at all.
constexpr float maximumAmplification = 4;
constexpr unsigned long long amplificationThreshold = 1U << 20U;
// ICU's names.
constexpr const char* utf16BE = "UTF-16BE";
constexpr const char* utf16LE = "UTF-16LE";
constexpr const char* latin1 = "ISO-8859-1";

bool isWhiteSpace(const std::string& text) {
    return std::strspn(text.c_str(), " \t\r\n") == text.size();
}

/// The names in the general entity references of markup in UTF-8.
///     given  "<a b='&x; &#38;' c='&y;'>"     gives  "x", "y"
std::vector<std::string_view> referencedEntities(std::string_view markup) {
    std::vector<std::string_view> names;
    std::size_t at = markup.find('&');
    while (at != std::string_view::npos) {
        const std::size_t end = markup.find_first_of(";&'\"<> \t\r\n", at + 1);
        if (end == std::string_view::npos) break;
        if (markup[end] == ';' && markup[at + 1] != '#')
            names.push_back(markup.substr(at + 1, end - at - 1));
        at = markup.find('&', end);
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
    void findEncoding(std::string_view block);
    [[noreturn]] void failParsing();

    void startElement(const char* name, const char** attributes);
    void endElement();
    void comment(const char* text);
    void processingInstruction(const char* target, const char* data);
    void endCdata();

    void flushText();
    void keepPending(OpenElement& element);
    void dropPending(const OpenElement& element);
    pugi::xml_node append(pugi::xml_node_type type);
    pugi::xml_node parent() { return open_.empty() ? *document_ : open_.back().node; }

    /// The part of the document around what the parser is reporting.
    struct InputContext {
        std::string_view bytes;
        std::size_t event = 0; // where it starts in `bytes`
        std::size_t eventLength = 0;
    };

    InputContext inputContext() const;
    std::string currentMarkup() const;
    std::string inUTF8(std::string_view raw) const;
    bool isUTF16() const { return encoding_ == utf16BE || encoding_ == utf16LE; }
    void declareEntity(const char* name, std::string_view value);
    void requireExplained(std::string_view entity);
    void refuseOutsideReferences(std::string_view markup);
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
    XmlDocument document_ = std::make_unique<pugi::xml_document>();
    std::vector<OpenElement> open_;
    std::vector<PendingSpace> pending_;
    std::string space_;
    std::string text_;
    bool inDoctype_ = false;
    // Declarations may stand outside of the document, so the parser no longer reports an
    // undeclared entity in an attribute: it drops it.
    bool mayMissDeclarations_ = false;
    // The entities declared here, each with those that its value refers to.
    std::map<std::string, std::vector<std::string>, std::less<>> entities_;
    std::set<std::string, std::less<>> explained_{"amp", "lt", "gt", "quot", "apos"};
    const char* encoding_ = nullptr; // of the document; null for those that UTF-8 includes
    std::string head_;               // the first two bytes
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
            guarded(self, [](XmlIntake& intake) { intake.inDoctype_ = true; });
        },
        [](void* self) { guarded(self, [](XmlIntake& intake) { intake.inDoctype_ = false; }); });
    XML_SetXmlDeclHandler(parser_.get(), [](void* self, const char*, const char* encoding, int) {
        guarded(self, [&](XmlIntake& intake) {
            if (intake.encoding_ == nullptr && encoding != nullptr &&
                lowercased(encoding) == "iso-8859-1")
                intake.encoding_ = latin1;
        });
    });
}

void XmlIntake::setEntityHandlers() {
    XML_SetNotStandaloneHandler(parser_.get(), [](void* self) {
        static_cast<XmlIntake*>(self)->mayMissDeclarations_ = true;
        return static_cast<int>(XML_STATUS_OK);
    });
    XML_SetEntityDeclHandler(parser_.get(), [](void* self, const char* name, int isParameter,
                                               const char* value, int length, const char*,
                                               const char*, const char*, const char*) {
        guarded(self, [&](XmlIntake& intake) {
            if (isParameter == 0 && value != nullptr)
                intake.declareEntity(name, {value, static_cast<std::size_t>(length)});
        });
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

XmlDocument XmlIntake::parse(ByteSource& source) {
    std::size_t count = 0;
    do {
        auto* const block = static_cast<char*>(XML_GetBuffer(parser_.get(), blockSize));
        if (block == nullptr) throw std::bad_alloc();
        count = source.read(block, blockSize);
        findEncoding({block, count});
        const XML_Status status = XML_ParseBuffer(parser_.get(), static_cast<int>(count),
                                                  count == 0 ? XML_TRUE : XML_FALSE);
        if (failure_) std::rethrow_exception(failure_);
        if (status != XML_STATUS_OK) failParsing();
    } while (count > 0);
    return std::move(document_);
}

/// UTF-16 is told by its first two bytes: a byte-order mark, or a "<" with its zero byte.
void XmlIntake::findEncoding(std::string_view block) {
    constexpr std::size_t headSize = 2;
    if (head_.size() == headSize) return;
    head_ += block.substr(0, headSize - head_.size());
    if (head_.size() < headSize) return;
    if (head_ == "\xFE\xFF" || head_.starts_with('\0')) encoding_ = utf16BE;
    if (head_ == "\xFF\xFE" || head_.ends_with('\0')) encoding_ = utf16LE;
}

void XmlIntake::failParsing() {
    XML_Parser parser = parser_.get();
    throw PlatformError(fmt::format("The XML could not be read: {} at line {}, column {}.",
                                    XML_ErrorString(XML_GetErrorCode(parser)), currentLine(parser),
                                    currentColumn(parser) + 1));
}

pugi::xml_node XmlIntake::append(pugi::xml_node_type type) {
    const pugi::xml_node node = parent().append_child(type);
    if (!node) throw std::bad_alloc();
    return node;
}

void XmlIntake::startElement(const char* name, const char** attributes) {
    flushText();
    if (open_.size() >= maximumXmlDepth)
        throw PlatformError(
            fmt::format("The XML is nested more than {} levels deep.", maximumXmlDepth));
    if (mayMissDeclarations_ && attributes[0] != nullptr) refuseOutsideReferences(currentMarkup());

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
        const bool isSpace = isWhiteSpace(text_);
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

/// What the parser is reporting, as it stands in the document but in UTF-8.
std::string XmlIntake::currentMarkup() const {
    const InputContext context = inputContext();
    return inUTF8(context.bytes.substr(context.event, context.eventLength));
}

XmlIntake::InputContext XmlIntake::inputContext() const {
    InputOffset event = 0;
    InputSize size = 0;
    const char* const input = currentInput(parser_.get(), &event, &size);
    if (input == nullptr) return {};
    const std::string_view bytes(input, static_cast<std::size_t>(size));
    const auto start = static_cast<std::size_t>(event);
    const auto length = static_cast<std::size_t>(currentByteCount(parser_.get()));
    return {bytes, start, std::min(length, bytes.size() - start)};
}

std::string XmlIntake::inUTF8(std::string_view raw) const {
    return encoding_ == nullptr ? std::string(raw) : toUTF8(raw, encoding_);
}

void XmlIntake::declareEntity(const char* name, std::string_view value) {
    std::vector<std::string> references;
    for (const std::string_view reference : referencedEntities(value))
        references.emplace_back(reference);
    entities_.try_emplace(name, std::move(references));
}

/// Refuses an entity unless it and all that its value refers to are declared here.
void XmlIntake::requireExplained(std::string_view entity) {
    std::vector<std::string_view> open{entity};
    std::set<std::string_view> seen;
    while (!open.empty()) {
        const std::string_view name = open.back();
        open.pop_back();
        if (explained_.contains(name) || !seen.insert(name).second) continue;
        const auto declared = entities_.find(name);
        if (declared == entities_.end()) refuseOutside(fmt::format("&{};", name));
        open.insert(open.end(), declared->second.begin(), declared->second.end());
    }
    // Later declarations add to what is known and change nothing.
    explained_.insert(seen.begin(), seen.end());
}

void XmlIntake::refuseOutsideReferences(std::string_view markup) {
    for (const std::string_view name : referencedEntities(markup))
        requireExplained(name);
}

void XmlIntake::refuseOutside(std::string_view what) {
    constexpr std::size_t shownCharacters = 80;
    throw PlatformError(fmt::format("The XML refers to “{}”, which lies outside of it. Export XML "
                                    "again from Final Cut.",
                                    firstCharacters(what, shownCharacters)));
}

} // namespace

bool holdsText(const char* elementName) {
    static constexpr std::array<const char*, 7> names{"text",     "text-style", "note",    "data",
                                                      "bookmark", "string",     "reserved"};
    return std::any_of(names.begin(), names.end(), [&](const char* name) {
        return *name == *elementName && std::strcmp(name, elementName) == 0;
    });
}

XmlDocument parseXml(ByteSource& source) {
    return XmlIntake().parse(source);
}

XmlDocument parseXml(std::string_view bytes) {
    MemorySource source(bytes);
    return parseXml(source);
}

} // namespace shotweaver
