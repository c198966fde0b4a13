#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace shotweaver {

/// The bytes with every one that is neither an ASCII letter, a digit nor in `kept` as "%" and two
/// upper-case hexadecimal digits.
std::string percentEncoded(std::string_view bytes, std::string_view kept);

/// The "file:" URL of an absolute path (RFC 8089): "file:///a%20b.xml".
std::string fileURL(std::string_view path);

/// The absolute path of a "file:" URL without a host or of this machine ("localhost"), percent
/// escapes decoded, query and fragment cut off; nothing for any other text.
std::optional<std::string> pathOfFileURL(std::string_view url);

} // namespace shotweaver
