#pragma once

#include <unicode/locid.h>

#include <string>

namespace shotweaver {

/// The locale of a BCP 47 tag; an unknown one counts as the root.
icu::Locale icuLocale(const std::string& tag);

} // namespace shotweaver
