#pragma once

#include <cstdint>
#include <optional>
#include <string>
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

/// Reads a time as whole frames of frameNumerator / frameDenominator seconds (both 1 to 1,000,000).
///     given  "3603600/30000s", 1001, 30000     gives  3600
/// Throws when the time is not a whole number of frames and when it is outside of -999,999,999 to
/// 999,999,999 frames.
std::int64_t framesForTime(std::string_view text, std::int64_t frameNumerator,
                           std::int64_t frameDenominator);

/// Frames as a time, never reduced: frames × frameNumerator, "/", frameDenominator, "s". Throws
/// when the product does not fit in signed 64 bits.
std::string timeString(std::int64_t frames, std::int64_t frameNumerator,
                       std::int64_t frameDenominator);

/// The whole frames per second that label timecode, at least 1: 30 for 1001/30000, 24 for
/// 1001/24000.
std::int64_t nominalFrameRate(std::int64_t frameNumerator, std::int64_t frameDenominator);

enum class DropFrame { no, yes };

/// True when drop-frame labels exist for this frame duration: exactly 1000/1001 of 30 or 60 frames
/// per second.
bool dropFrameApplies(std::int64_t frameNumerator, std::int64_t frameDenominator);

/// A frame number as HH:MM:SS:FF, or HH:MM:SS;FF with drop-frame where it applies. Negative numbers
/// get a "-" in front; hours are not wrapped at 24.
///     given  1800, 1001, 30000, DropFrame::yes     gives  "00:01:00;02"
std::string formatTimecode(std::int64_t frame, std::int64_t frameNumerator,
                           std::int64_t frameDenominator, DropFrame dropFrame);

/// Frames as seconds: frames × frameNumerator ÷ frameDenominator in double precision, in this
/// order.
double secondsForFrames(std::int64_t frames, std::int64_t frameNumerator,
                        std::int64_t frameDenominator);

/// Seconds as frames, not rounded: seconds × frameDenominator ÷ frameNumerator in double precision,
/// in this order.
double framesForSeconds(double seconds, std::int64_t frameNumerator, std::int64_t frameDenominator);

} // namespace shotweaver
