#pragma once

#include <string>

namespace shotweaver {

/// The user's locale as a BCP 47 tag ("de-AT"), or "und" (the root) for the C and POSIX locales and
/// for none.
std::string userLocale();

/// A number in the locale's own style with at most three decimals: 1234.5678 is "1.234,568" in
/// "de". An unknown locale counts as the root, whose style is English.
std::string localizedDecimal(double value, const std::string& locale);

} // namespace shotweaver
