#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace shotweaver::fuzz {

/// The rules of times and timecode once more, in the plainest way: 128 bits, labels counted, no
/// overflow to look out for. Nothing of the engine is used.

__extension__ using Wide = __int128;

struct FrameTerms {
    std::int64_t numerator = 1; // seconds a frame, both 1 to 1,000,000
    std::int64_t denominator = 1;
};

/// A time read as seconds; nothing for one that is refused.
std::optional<double> oracleSeconds(std::string_view text);

struct WideTime {
    Wide numerator = 0;
    Wide denominator = 1;
};

/// A time read exactly; nothing for one that is refused.
std::optional<WideTime> oracleTime(std::string_view text);

/// A time in whole frames, or the sentence that refuses it.
struct FramesOrSentence {
    std::optional<Wide> frames;
    std::string sentence;
};

FramesOrSentence oracleFrames(std::string_view text, const FrameTerms& frame);

/// "frames × numerator/denominators"; nothing when the product takes more than 64 bits.
std::optional<std::string> oracleTimeText(Wide frames, const FrameTerms& frame);

Wide oracleRate(const FrameTerms& frame);
bool oracleDrops(const FrameTerms& frame);

/// The frame that a timecode typed by a user names, counted from 00:00:00:00.
FramesOrSentence oracleTimecode(std::string_view text, const FrameTerms& frame, bool isDropFrame);

} // namespace shotweaver::fuzz
