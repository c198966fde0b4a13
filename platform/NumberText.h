#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace shotweaver {

/// Number text, read and written the same way under every locale.

/// Reads a decimal number: an optional "+" or "-", digits, an optional fraction (a full stop and
/// digits), an optional exponent; nothing before or after. No infinities, not-a-numbers or
/// hexadecimal. Too small for a double is zero; too large is refused like any other text.
std::optional<double> parseDecimal(std::string_view text);

/// Reads an optional "+" or "-" and one or more ASCII digits that fit in signed 64 bits.
std::optional<std::int64_t> parseInteger(std::string_view text);

/// Reads one or more ASCII digits that fit in unsigned 64 bits.
std::optional<std::uint64_t> parseUnsigned(std::string_view text);

/// The shortest decimal that reads back as exactly this number, with at least one digit after the
/// point: 60 is "60.0", 2.5 is "2.5". Below 0.0001 and from 10^16 on an exponent is written.
std::string shortestDecimal(double value);

/// A fixed number of decimals, correctly rounded, with a full stop as decimal mark.
std::string fixedDecimal(double value, int decimals);

/// Does `work` while the C library reads and writes this thread's numbers as in the C locale: for
/// libraries that ask the locale, whose decimal mark may be a comma or several bytes. Throws what
/// `work` throws.
void withPlainNumbers(const std::function<void()>& work);

} // namespace shotweaver
