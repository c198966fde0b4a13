#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shotweaver {

/// Standard base64 (RFC 4648, section 4): padded, without line breaks.
std::string base64(std::string_view bytes);

/// The bytes of a standard base64 text; nothing for any other text (white space, missing padding,
/// bits left over that are not zero).
std::optional<std::string> fromBase64(std::string_view text);

} // namespace shotweaver
