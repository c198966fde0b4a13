#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace shotweaver {

enum class DropFrame { no, yes };

/// How long a project's frames last: numerator / denominator seconds each, both 1 to 1,000,000.
/// Operations that refuse throw `FinalCutImportError` with the sentence for the user.
struct FrameDuration {
    std::int64_t numerator = 1;
    std::int64_t denominator = 1;

    /// Frames as seconds: frames × numerator ÷ denominator in double precision, in this order.
    double seconds(std::int64_t frames) const;

    /// Seconds as frames, not rounded: seconds × denominator ÷ numerator in double precision, in
    /// this order.
    double frames(double seconds) const;

    /// Reads a time as whole frames.
    ///     given  "3603600/30000s", 1001/30000     gives  3600
    /// Throws when the time is not a whole number of frames and when it is outside of -999,999,999
    /// to 999,999,999 frames.
    std::int64_t frames(std::string_view time) const;

    /// Frames as a time, never reduced: frames × numerator, "/", denominator, "s". Throws when the
    /// product does not fit in signed 64 bits.
    std::string time(std::int64_t frames) const;

    /// The whole frames per second that label timecode, at least 1: 30 for 1001/30000, 24 for
    /// 1001/24000.
    std::int64_t nominalRate() const;

    /// True when drop-frame labels exist: exactly 1000/1001 of 30 or 60 frames per second.
    bool dropFrameApplies() const;

    /// A frame number as HH:MM:SS:FF, or HH:MM:SS;FF with drop-frame where it applies. Negative
    /// numbers get a "-" in front; hours are not wrapped at 24.
    ///     given  1800, DropFrame::yes, 1001/30000     gives  "00:01:00;02"
    std::string timecode(std::int64_t frame, DropFrame dropFrame) const;

    /// The frame number of a label, given as the number that it would have if none were skipped. A
    /// label that drop-frame timecode skips stands for the next one that exists. Not negative.
    ///     given  1800 (00:01:00;00), DropFrame::yes, 1001/30000     gives  1800 (00:01:00;02)
    std::int64_t frameOfLabel(std::int64_t label, DropFrame dropFrame) const;

    bool operator==(const FrameDuration&) const = default;
};

} // namespace shotweaver
