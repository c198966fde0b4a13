#include "engine/TimeValues.h"

#include "engine/FinalCutImportError.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace shotweaver {

namespace {

std::optional<double> readSeconds(std::string_view digits) {
    const std::size_t slash = digits.find('/');
    const auto numerator = parseDecimal(digits.substr(0, slash));
    if (!numerator) return std::nullopt;
    if (slash == std::string_view::npos) return numerator;
    // A second "/" is in the way of the denominator's reading.
    const auto denominator = parseDecimal(digits.substr(slash + 1));
    if (!denominator || !(*denominator > 0)) return std::nullopt;
    const double seconds = *numerator / *denominator;
    return std::isfinite(seconds) ? std::optional(seconds) : std::nullopt;
}

std::optional<RationalTime> readRational(std::string_view digits) {
    std::array<std::string_view, 2> pieces;
    std::size_t count = 0;
    for (const std::string_view piece : split(digits, '/')) {
        if (piece.empty()) continue;
        if (count == pieces.size()) return std::nullopt;
        pieces[count++] = piece;
    }
    if (count == 0) return std::nullopt;
    const auto numerator = parseInteger(pieces[0]);
    const auto denominator = count == 2 ? parseInteger(pieces[1]) : std::optional<std::int64_t>(1);
    if (!numerator || !denominator || *denominator <= 0) return std::nullopt;
    return RationalTime{*numerator, *denominator};
}

} // namespace

double parseSeconds(std::optional<std::string_view> text) {
    if (!text || !text->ends_with('s'))
        throw FinalCutImportError::invalid("The export contains a missing or invalid time value.");
    const auto seconds = readSeconds(text->substr(0, text->size() - 1));
    if (!seconds)
        throw FinalCutImportError::invalid(
            fmt::format("The export contains an invalid time value: {}", *text));
    return *seconds;
}

RationalTime parseRationalTime(std::string_view text) {
    const auto time = text.ends_with('s') ? readRational(text.substr(0, text.size() - 1))
                                          : std::optional<RationalTime>();
    if (!time) throw FinalCutImportError::invalid(fmt::format("Invalid XML time: {}", text));
    return *time;
}

} // namespace shotweaver
