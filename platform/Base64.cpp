#include "platform/Base64.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace shotweaver {

namespace {

constexpr std::string_view alphabet =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr std::uint8_t noDigit = 0x80; // above the six bits of a digit

/// The value of each byte as a digit, or `noDigit`.
constexpr std::array<std::uint8_t, 256> digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < alphabet.size(); ++value)
        values[static_cast<unsigned char>(alphabet[value])] = static_cast<std::uint8_t>(value);
    return values;
}();

std::uint32_t byteAt(const char* bytes) {
    return static_cast<unsigned char>(*bytes);
}

std::uint32_t valueAt(const char* digits) {
    return digitValues[static_cast<unsigned char>(*digits)];
}

// Written out rather than looped over: a document of 40 MB goes through these two.

/// Three bytes as four digits.
void putDigits(const char* bytes, char* into) {
    const std::uint32_t group = byteAt(bytes) << 16U | byteAt(bytes + 1) << 8U | byteAt(bytes + 2);
    into[0] = alphabet[group >> 18U];
    into[1] = alphabet[(group >> 12U) & 63U];
    into[2] = alphabet[(group >> 6U) & 63U];
    into[3] = alphabet[group & 63U];
}

/// Four digits as three bytes. Gives all their values' bits together, in which one that is no digit
/// leaves `noDigit`.
std::uint32_t putBytes(const char* digits, char* into) {
    const std::uint32_t a = valueAt(digits);
    const std::uint32_t b = valueAt(digits + 1);
    const std::uint32_t c = valueAt(digits + 2);
    const std::uint32_t d = valueAt(digits + 3);
    const std::uint32_t group = a << 18U | b << 12U | c << 6U | d;
    into[0] = static_cast<char>(group >> 16U);
    into[1] = static_cast<char>(group >> 8U);
    into[2] = static_cast<char>(group);
    return a | b | c | d;
}

} // namespace

std::string base64(std::string_view bytes) {
    std::string text((bytes.size() + 2) / 3 * 4, '=');
    char* into = text.data();
    for (; bytes.size() >= 3; bytes.remove_prefix(3), into += 4)
        putDigits(bytes.data(), into);
    if (bytes.empty()) return text;

    std::string last(bytes);
    last.resize(3);
    putDigits(last.data(), into);
    const std::size_t padding = 3 - bytes.size();
    text.replace(text.size() - padding, padding, padding, '=');
    return text;
}

std::optional<std::string> fromBase64(std::string_view text) {
    if (text.empty()) return "";
    if (text.size() % 4 != 0) return std::nullopt;
    const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
    std::string last(text.substr(text.size() - 4));
    last.replace(4 - padding, padding, padding, 'A'); // a zero
    text.remove_suffix(4);

    std::string bytes(text.size() / 4 * 3 + 3, '\0');
    char* into = bytes.data();
    std::uint32_t seen = 0;
    for (; !text.empty(); text.remove_prefix(4), into += 3)
        seen |= putBytes(text.data(), into);
    seen |= putBytes(last.data(), into);
    // Bits left over stand in the bytes that the padding takes away.
    const std::string_view leftOver = std::string_view(bytes).substr(bytes.size() - padding);
    if ((seen & noDigit) != 0 || leftOver.find_first_not_of('\0') != std::string_view::npos)
        return std::nullopt;
    bytes.resize(bytes.size() - padding);
    return bytes;
}

} // namespace shotweaver
