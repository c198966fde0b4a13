#include "engine/FrameDuration.h"

#include "engine/FinalCutImportError.h"
#include "engine/TimeValues.h"

#include <fmt/format.h>

#include <algorithm>

namespace shotweaver {

namespace {

constexpr std::int64_t maximumFrames = 999'999'999;

} // namespace

double FrameDuration::seconds(std::int64_t frames) const {
    return static_cast<double>(frames) * static_cast<double>(numerator) /
           static_cast<double>(denominator);
}

double FrameDuration::frames(double seconds) const {
    return seconds * static_cast<double>(denominator) / static_cast<double>(numerator);
}

std::int64_t FrameDuration::frames(std::string_view time) const {
    const RationalTime given = parseRationalTime(time);
    std::int64_t dividend = 0;
    std::int64_t divisor = 0;
    const bool overflows = __builtin_mul_overflow(given.numerator, denominator, &dividend) ||
                           __builtin_mul_overflow(given.denominator, numerator, &divisor) ||
                           divisor < 1;
    if (overflows || dividend % divisor != 0)
        throw FinalCutImportError::invalid(
            "This prototype needs timing aligned to the project frame rate.");
    const std::int64_t whole = dividend / divisor;
    if (whole < -maximumFrames || whole > maximumFrames)
        throw FinalCutImportError::invalid(
            "This time value exceeds the prototype's supported range.");
    return whole;
}

std::string FrameDuration::time(std::int64_t frames) const {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(frames, numerator, &product))
        throw FinalCutImportError::invalid(
            "A time in this edit is too large to export. Import the project again.");
    return fmt::format("{}/{}s", product, denominator);
}

std::int64_t FrameDuration::nominalRate() const {
    // Halves round up: (2d + n) / 2n is d/n + 1/2, truncated.
    const std::int64_t rate = (2 * denominator + numerator) / (2 * numerator);
    return rate < 1 ? 1 : rate;
}

bool FrameDuration::dropFrameApplies() const {
    const std::int64_t rate = nominalRate();
    return (rate == 30 || rate == 60) && denominator * 1001 == numerator * rate * 1000;
}

std::string FrameDuration::timecode(std::int64_t frame, DropFrame dropFrame) const {
    const auto rate = static_cast<std::uint64_t>(nominalRate());
    // Unsigned, so that the magnitude of every signed number fits.
    std::uint64_t label = static_cast<std::uint64_t>(frame);
    if (frame < 0) label = 0 - label;

    const bool drops = dropFrame == DropFrame::yes && dropFrameApplies();
    if (drops) {
        const std::uint64_t dropped = rate / 15; // labels skipped a minute
        const std::uint64_t tenMinutes = rate * 600 - 9 * dropped;
        const std::uint64_t tens = label / tenMinutes;
        const std::uint64_t rest = label % tenMinutes;
        label += 9 * dropped * tens;
        if (rest >= dropped) label += dropped * ((rest - dropped) / (rate * 60 - dropped));
    }
    const std::uint64_t second = label / rate;
    return fmt::format("{}{:02}:{:02}:{:02}{}{:02}", frame < 0 ? "-" : "", second / 3600,
                       second / 60 % 60, second % 60, drops ? ";" : ":", label % rate);
}

std::int64_t FrameDuration::frameOfLabel(std::int64_t label, DropFrame dropFrame) const {
    if (dropFrame == DropFrame::no || !dropFrameApplies()) return label;
    const std::int64_t rate = nominalRate();
    const std::int64_t dropped = rate / 15; // labels skipped a minute, but not every tenth
    const std::int64_t minutes = label / (rate * 60);
    if (minutes % 10 != 0) label = std::max(label, minutes * rate * 60 + dropped);
    return label - dropped * (minutes - minutes / 10);
}

} // namespace shotweaver
