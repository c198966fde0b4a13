#include "platform/Uuid.h"

#include <cstddef>
#include <cstring>
#include <memory>

namespace shotweaver {

namespace {

constexpr std::string_view upperDigits = "0123456789ABCDEF";
constexpr std::size_t textLength = 36;

bool isHyphenPosition(std::size_t at) {
    return at == 8 || at == 13 || at == 18 || at == 23;
}

std::optional<unsigned> digitValue(char c) {
    if (c >= '0' && c <= '9') return static_cast<unsigned>(c - '0');
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
    return std::nullopt;
}

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
    std::size_t digit = 0;
    for (std::size_t at = 0; at < textLength; ++at) {
        if (isHyphenPosition(at)) {
            if (text[at] != '-') return std::nullopt;
            continue;
        }
        const auto value = digitValue(text[at]);
        if (!value) return std::nullopt;
        auto& byte = uuid.bytes[digit / 2];
        byte = static_cast<std::uint8_t>((static_cast<unsigned>(byte) << 4U) | *value);
        ++digit;
    }
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
