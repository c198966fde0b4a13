#pragma once

#include <string_view>

namespace shotweaver {

/// True for an absolute URL as RFC 3986 writes it: a scheme, then something after its colon, in
/// ASCII, with every "%" before two hexadecimal digits. After "//" a host is named, except in a
/// "file:" URL; a port is a number.
bool isAbsoluteURL(std::string_view text);

} // namespace shotweaver
