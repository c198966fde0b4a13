#include "platform/Text.h"

#include "platform/PlatformError.h"

#include <fmt/ranges.h>
#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace shotweaver {

namespace {

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

bool isASCII(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

void require(UErrorCode status) {
    if (U_FAILURE(status)) throw PlatformError("Unicode text services are not available.");
}

/// Reads the character at `at` and moves past it; negative when the bytes are not UTF-8.
UChar32 nextCharacter(const char* bytes, std::int32_t& at, std::int32_t end) {
    UChar32 character = 0;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wconversion"
    U8_NEXT(bytes, at, end, character);
#pragma GCC diagnostic pop
    return character;
}

const char* bytesOf(std::string_view text) {
    return text.data() == nullptr ? "" : text.data();
}

/// The canonical decomposition, with marks in their order. The library gets there, too, but takes
/// the square of the time for thousands of marks on one letter.
std::string decomposed(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFDInstance(status);
    require(status);
    icu::UnicodeString units;
    const icu::UnicodeString whole = icu::UnicodeString::fromUTF8(piece(text));
    for (std::int32_t at = 0; at < whole.length(); at = whole.moveIndex32(at, 1)) {
        icu::UnicodeString parts;
        const UChar32 character = whole.char32At(at);
        units +=
            normalizer->getDecomposition(character, parts) ? parts : icu::UnicodeString(character);
    }
    std::vector<UChar32> characters(static_cast<std::size_t>(units.countChar32()));
    units.toUTF32(characters.data(), static_cast<std::int32_t>(characters.size()), status);
    require(status);
    const auto isMark = [](UChar32 each) { return u_getCombiningClass(each) != 0; };
    for (auto mark = characters.begin(); mark != characters.end();) {
        mark = std::find_if(mark, characters.end(), isMark);
        const auto end = std::find_if_not(mark, characters.end(), isMark);
        std::stable_sort(mark, end, [](UChar32 a, UChar32 b) {
            return u_getCombiningClass(a) < u_getCombiningClass(b);
        });
        mark = end;
    }
    std::string result;
    icu::UnicodeString::fromUTF32(characters.data(), static_cast<std::int32_t>(characters.size()))
        .toUTF8String(result);
    return result;
}

} // namespace

bool isUTF8(std::string_view text) {
    const auto length = static_cast<std::int32_t>(text.size());
    std::int32_t at = 0;
    while (at < length) {
        if (nextCharacter(text.data(), at, length) < 0) return false;
    }
    return true;
}

std::string toUTF8(std::string_view bytes) {
    std::string result;
    icu::UnicodeString::fromUTF8(piece(bytes)).toUTF8String(result);
    return result;
}

std::string normalizedNFC(std::string_view text) {
    if (isASCII(text)) return std::string(text);
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFCInstance(status);
    require(status);
    constexpr std::size_t longText = 1000;
    const std::string ordered = text.size() > longText ? decomposed(text) : std::string(text);
    std::string result;
    icu::StringByteSink<std::string> sink(&result);
    normalizer->normalizeUTF8(0, piece(ordered), sink, nullptr, status);
    require(status);
    return result;
}

std::string_view trimmed(std::string_view text) {
    const char* const bytes = bytesOf(text);
    auto end = static_cast<std::int32_t>(text.size());
    std::int32_t start = 0;
    while (start < end) {
        std::int32_t next = start;
        const UChar32 character = nextCharacter(bytes, next, end);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
        start = next;
    }
    while (end > start) {
        std::int32_t previous = end;
        UChar32 character = 0;
        U8_PREV(bytes, start, previous, character);
        if (character < 0 || !u_isUWhiteSpace(character)) break;
        end = previous;
    }
    return text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(end - start));
}

std::string lowercased(std::string_view text) {
    std::string result;
    icu::UnicodeString::fromUTF8(piece(text)).toLower(icu::Locale::getRoot()).toUTF8String(result);
    return result;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
    UErrorCode status = U_ZERO_ERROR;
    UText* const opened =
        utext_openUTF8(nullptr, bytesOf(text), static_cast<std::int64_t>(text.size()), &status);
    require(status);
    const std::unique_ptr<UText, decltype(&utext_close)> characters(opened, &utext_close);
    const std::unique_ptr<icu::BreakIterator> boundaries(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    require(status);
    boundaries->setText(characters.get(), status);
    require(status);

    std::int32_t end = 0;
    for (std::size_t seen = 0; seen < count; ++seen) {
        const std::int32_t next = boundaries->next();
        if (next == icu::BreakIterator::DONE) break;
        end = next;
    }
    return text.substr(0, static_cast<std::size_t>(end));
}

std::size_t displayWidth(std::string_view text) {
    const auto end = static_cast<std::int32_t>(text.size());
    std::size_t width = 0;
    for (std::int32_t at = 0; at < end;) {
        const UChar32 character = nextCharacter(bytesOf(text), at, end);
        if (character >= 0 && (U_MASK(u_charType(character)) & (U_GC_M_MASK | U_GC_CF_MASK)) != 0)
            continue;
        const int kind =
            character < 0 ? 0 : u_getIntPropertyValue(character, UCHAR_EAST_ASIAN_WIDTH);
        width += kind == U_EA_WIDE || kind == U_EA_FULLWIDTH ? 2 : 1;
    }
    return width;
}

void TextSet::add(std::string_view text) {
    textByNFC_.try_emplace(normalizedNFC(text), text);
}

std::vector<std::string> TextSet::sorted() const {
    std::vector<std::string> texts;
    texts.reserve(textByNFC_.size());
    for (const auto& [nfc, text] : textByNFC_)
        texts.push_back(text);
    return texts;
}

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    return fmt::format("{}", fmt::join(texts, separator));
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = text.find(separator, start);
        pieces.push_back(text.substr(start, end - start));
        if (end == std::string_view::npos) return pieces;
        start = end + 1;
    }
}

} // namespace shotweaver
