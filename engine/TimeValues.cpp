#include "engine/TimeValues.h"

#include "engine/FinalCutImportError.h"
#include "platform/NumberText.h"
#include "platform/Text.h"

#include <fmt/format.h>

#include <array>
#include <cmath>

namespace shotweaver {

namespace {

constexpr std::int64_t maximumFrames = 999'999'999;

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

std::int64_t framesForTime(std::string_view text, std::int64_t frameNumerator,
                           std::int64_t frameDenominator) {
    const RationalTime time = parseRationalTime(text);
    std::int64_t dividend = 0;
    std::int64_t divisor = 0;
    const bool overflows = __builtin_mul_overflow(time.numerator, frameDenominator, &dividend) ||
                           __builtin_mul_overflow(time.denominator, frameNumerator, &divisor) ||
                           divisor < 1;
    if (overflows || dividend % divisor != 0)
        throw FinalCutImportError::invalid(
            "This prototype needs timing aligned to the project frame rate.");
    const std::int64_t frames = dividend / divisor;
    if (frames < -maximumFrames || frames > maximumFrames)
        throw FinalCutImportError::invalid(
            "This time value exceeds the prototype's supported range.");
    return frames;
}

std::string timeString(std::int64_t frames, std::int64_t frameNumerator,
                       std::int64_t frameDenominator) {
    std::int64_t numerator = 0;
    if (__builtin_mul_overflow(frames, frameNumerator, &numerator))
        throw FinalCutImportError::invalid(
            "A time in this edit is too large to export. Import the project again.");
    return fmt::format("{}/{}s", numerator, frameDenominator);
}

std::int64_t nominalFrameRate(std::int64_t frameNumerator, std::int64_t frameDenominator) {
    // Halves round up: (2d + n) / 2n is d/n + 1/2, truncated.
    const std::int64_t rate = (2 * frameDenominator + frameNumerator) / (2 * frameNumerator);
    return rate < 1 ? 1 : rate;
}

bool dropFrameApplies(std::int64_t frameNumerator, std::int64_t frameDenominator) {
    const std::int64_t rate = nominalFrameRate(frameNumerator, frameDenominator);
    return (rate == 30 || rate == 60) && frameDenominator * 1001 == frameNumerator * rate * 1000;
}

std::string formatTimecode(std::int64_t frame, std::int64_t frameNumerator,
                           std::int64_t frameDenominator, DropFrame dropFrame) {
    const auto rate =
        static_cast<std::uint64_t>(nominalFrameRate(frameNumerator, frameDenominator));
    // Unsigned, so that the magnitude of every signed number fits.
    std::uint64_t label = static_cast<std::uint64_t>(frame);
    if (frame < 0) label = 0 - label;

    const bool drops =
        dropFrame == DropFrame::yes && dropFrameApplies(frameNumerator, frameDenominator);
    if (drops) {
        const std::uint64_t dropped = rate / 15; // labels skipped a minute
        const std::uint64_t tenMinutes = rate * 600 - 9 * dropped;
        const std::uint64_t tens = label / tenMinutes;
        const std::uint64_t rest = label % tenMinutes;
        label += 9 * dropped * tens;
        if (rest >= dropped) label += dropped * ((rest - dropped) / (rate * 60 - dropped));
    }
    const std::uint64_t seconds = label / rate;
    return fmt::format("{}{:02}:{:02}:{:02}{}{:02}", frame < 0 ? "-" : "", seconds / 3600,
                       seconds / 60 % 60, seconds % 60, drops ? ";" : ":", label % rate);
}

double secondsForFrames(std::int64_t frames, std::int64_t frameNumerator,
                        std::int64_t frameDenominator) {
    return static_cast<double>(frames) * static_cast<double>(frameNumerator) /
           static_cast<double>(frameDenominator);
}

double framesForSeconds(double seconds, std::int64_t frameNumerator,
                        std::int64_t frameDenominator) {
    return seconds * static_cast<double>(frameDenominator) / static_cast<double>(frameNumerator);
}

} // namespace shotweaver
