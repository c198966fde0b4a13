#include "platform/FileURL.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace shotweaver {

namespace {

constexpr std::string_view scheme = "file:";
constexpr std::string_view upperDigits = "0123456789ABCDEF";

char lowerASCII(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isLetterOrDigit(char c) {
    const char lower = lowerASCII(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9');
}

/// Schemes and hosts are compared without regard to case.
bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(),
                      [](char a, char b) { return lowerASCII(a) == b; });
}

/// Nothing when an escape is incomplete or stands for the byte that no path can hold.
std::optional<std::string> percentDecoded(std::string_view text) {
    std::string bytes;
    for (; !text.empty(); text.remove_prefix(1)) {
        if (text.front() != '%') {
            bytes += text.front();
            continue;
        }
        text.remove_prefix(1);
        unsigned char byte = 0;
        const char* const end = text.data() + std::min<std::size_t>(text.size(), 2);
        const auto read = std::from_chars(text.data(), end, byte, 16);
        if (read.ptr != text.data() + 2 || byte == 0) return std::nullopt;
        bytes += static_cast<char>(byte);
        text.remove_prefix(1);
    }
    return bytes;
}

} // namespace

std::string percentEncoded(std::string_view bytes, std::string_view kept) {
    std::string text;
    for (const char c : bytes) {
        if (isLetterOrDigit(c) || kept.find(c) != std::string_view::npos) {
            text += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        text += {'%', upperDigits[byte >> 4U], upperDigits[byte & 15U]};
    }
    return text;
}

std::string fileURL(std::string_view path) {
    return "file://" + percentEncoded(path, "/-._~");
}

std::optional<std::string> pathOfFileURL(std::string_view url) {
    if (!equalsIgnoringCase(url.substr(0, scheme.size()), scheme)) return std::nullopt;
    std::string_view path = url.substr(scheme.size());
    path = path.substr(0, path.find_first_of("?#"));
    if (path.starts_with("//")) {
        path.remove_prefix(2);
        const std::string_view host = path.substr(0, path.find('/'));
        if (!host.empty() && !equalsIgnoringCase(host, "localhost")) return std::nullopt;
        path.remove_prefix(host.size());
    }
    if (!path.starts_with('/')) return std::nullopt;
    return percentDecoded(path);
}

} // namespace shotweaver
