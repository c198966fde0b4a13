#include "help/AbsoluteURL.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace shotweaver {

namespace {

// Locales have no say here, so the standard library's own tests of characters are not used.

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

bool isScheme(std::string_view text) {
    return !text.empty() && isLetter(text.front()) &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return isLetter(c) || isDigit(c) || c == '+' || c == '-' || c == '.';
           });
}

/// True when all characters may stand in a URL, brackets apart, and all escapes are whole.
bool isEscaped(std::string_view text) {
    constexpr std::string_view signs = "-._~:/?#@!$&'()*+,;=";
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '%') {
            if (at + 2 >= text.size() || !isHexDigit(text[at + 1]) || !isHexDigit(text[at + 2]))
                return false;
        } else if (!isLetter(c) && !isDigit(c) && signs.find(c) == std::string_view::npos) {
            return false;
        }
    }
    return true;
}

/// "[2001:db8::1]", without its brackets.
bool isAddress(std::string_view text) {
    return text.find(':') != std::string_view::npos &&
           std::all_of(text.begin(), text.end(),
                       [](char c) { return isHexDigit(c) || c == ':' || c == '.'; });
}

/// Web addresses do; other schemes may leave the host out, as in "file:///a". Case does not matter.
bool needsHost(std::string_view scheme) {
    std::string lower;
    for (const char c : scheme)
        lower += isLetter(c) ? static_cast<char>(c | 0x20) : c;
    return lower == "http" || lower == "https";
}

/// "user@host:8080"; the host may be an address in brackets.
bool isAuthority(std::string_view text, bool needsHost) {
    if (const std::size_t at = text.find('@'); at != std::string_view::npos) {
        if (!isEscaped(text.substr(0, at))) return false;
        text.remove_prefix(at + 1);
    }
    std::size_t end = text.find(':');
    if (text.starts_with('[')) {
        const std::size_t bracket = text.find(']');
        if (bracket == std::string_view::npos || !isAddress(text.substr(1, bracket - 1)))
            return false;
        end = bracket + 1;
    }
    const std::string_view host = text.substr(0, end);
    const std::string_view port = text.substr(host.size());
    return (!host.empty() || !needsHost) && (host.starts_with('[') || isEscaped(host)) &&
           host.find('@') == std::string_view::npos &&
           (port.empty() ||
            (port.front() == ':' && std::all_of(port.begin() + 1, port.end(), isDigit)));
}

} // namespace

bool isAbsoluteURL(std::string_view text) {
    const std::size_t colon = text.find(':');
    if (colon == std::string_view::npos || !isScheme(text.substr(0, colon))) return false;
    std::string_view rest = text.substr(colon + 1);
    if (rest.starts_with("//")) {
        const std::size_t end = std::min(rest.find_first_of("/?#", 2), rest.size());
        if (!isAuthority(rest.substr(2, end - 2), needsHost(text.substr(0, colon)))) return false;
        rest.remove_prefix(end);
    } else if (rest.empty()) {
        return false;
    }
    return isEscaped(rest) && std::count(rest.begin(), rest.end(), '#') <= 1;
}

} // namespace shotweaver
