#pragma once

#include <string>

namespace shotweaver {

/// Dates are seconds, with fraction, since 2001-01-01 00:00:00 UTC: the form in which they are
/// stored.
double secondsSince2001Now();

/// ISO 8601 internet date-time in UTC with whole seconds (fractions are cut off) and the suffix Z.
///     given  763221900.75     gives  "2025-03-09T14:05:00Z"
/// Dates outside the years 0000 to 9999, infinities and not-a-numbers give the nearest end of that
/// span.
std::string iso8601(double secondsSince2001);

} // namespace shotweaver
