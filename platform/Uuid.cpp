#include "platform/Uuid.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace shotweaver {

namespace {

constexpr std::string_view upperDigits = "0123456789ABCDEF";
constexpr std::size_t textLength = 36;

bool isHyphenPosition(std::size_t at) {
    return at == 8 || at == 13 || at == 18 || at == 23;
}

constexpr std::uint8_t noDigit = 0x80; // above the four bits of a digit

/// The value of each byte as a digit, or `noDigit`. A session has millions of them.
constexpr std::array<std::uint8_t, 256> digitValues = [] {
    std::array<std::uint8_t, 256> values{};
    values.fill(noDigit);
    for (std::size_t value = 0; value < upperDigits.size(); ++value) {
        const auto digit = static_cast<unsigned char>(upperDigits[value]);
        values[digit] = static_cast<std::uint8_t>(value);
        if (value >= 10) values[digit + 'a' - 'A'] = static_cast<std::uint8_t>(value);
    }
    return values;
}();

} // namespace

std::string UUID::compactText() const {
    std::string text;
    text.reserve(2 * bytes.size());
    for (const unsigned byte : bytes) {
        text += upperDigits[byte >> 4U];
        text += upperDigits[byte & 15U];
    }
    return text;
}

std::string UUID::text() const {
    std::string text = compactText();
    for (const std::size_t at : {8U, 13U, 18U, 23U})
        text.insert(at, 1, '-');
    return text;
}

std::optional<UUID> UUID::parse(std::string_view text) {
    if (text.size() != textLength) return std::nullopt;
    UUID uuid;
    unsigned seen = 0;
    std::size_t at = 0;
    for (std::uint8_t& byte : uuid.bytes) {
        if (isHyphenPosition(at) && text[at++] != '-') return std::nullopt;
        const unsigned high = digitValues[static_cast<unsigned char>(text[at++])];
        const unsigned low = digitValues[static_cast<unsigned char>(text[at++])];
        byte = static_cast<std::uint8_t>(high << 4U | low);
        seen |= high | low;
    }
    if ((seen & noDigit) != 0) return std::nullopt;
    return uuid;
}

UUID UUID::random(RandomSource& source) {
    UUID uuid;
    const std::array<std::uint64_t, 2> words{source.bits(), source.bits()};
    std::memcpy(uuid.bytes.data(), words.data(), uuid.bytes.size());
    uuid.bytes[6] = static_cast<std::uint8_t>((uuid.bytes[6] & 0x0FU) | 0x40U);
    uuid.bytes[8] = static_cast<std::uint8_t>((uuid.bytes[8] & 0x3FU) | 0x80U);
    return uuid;
}

UUIDMaker secureUUIDs() {
    return [source = std::make_shared<SecureRandom>()] { return UUID::random(*source); };
}

} // namespace shotweaver
