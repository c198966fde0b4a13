#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace shotweaver {

/// FCPXML states every time as rational seconds in text: "1001/30000s", "3600s". These functions
/// throw `FinalCutImportError` with the sentence for the user.

/// A time as written, in seconds: numerator / denominator, the denominator above 0.
struct RationalTime {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;

    bool operator==(const RationalTime&) const = default;
};

/// Reads a time leniently as seconds: decimals and exponents are allowed on both sides of the "/",
/// empty pieces are not. The result is finite.
double parseSeconds(std::optional<std::string_view> text);

/// Reads a time exactly: whole numbers only; empty pieces around "/" are dropped ("1//2s" is 1/2).
RationalTime parseRationalTime(std::string_view text);

} // namespace shotweaver
