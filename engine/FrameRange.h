#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace shotweaver {

/// Frames of the project, half-open: [lowerBound, upperBound), lowerBound ≤ upperBound. Frame 0 is
/// the first frame of the multicam clip.
struct FrameRange {
    std::int64_t lowerBound = 0;
    std::int64_t upperBound = 0;

    std::int64_t length() const { return upperBound - lowerBound; }
    bool contains(const FrameRange& other) const {
        return lowerBound <= other.lowerBound && other.upperBound <= upperBound;
    }
    bool operator==(const FrameRange&) const = default;
};

/// Sorted by lowerBound, non-empty ranges, neither overlapping nor touching.
using Coverage = std::vector<FrameRange>;

/// Coverage by angle identifier.
using CoverageMap = std::map<std::string, Coverage, std::less<>>;

/// Joins overlapping and touching ranges.
///     given  [5,9) [0,5) [20,24)     gives  [0,9) [20,24)
/// The given ranges are not empty; so are the joined ones.
Coverage mergeRanges(std::vector<FrameRange> ranges);

/// Gathers ranges one by one. However many there are, it takes about as much memory as what they
/// cover.
class CoverageBuilder {
  public:
    /// An empty range, also one whose bounds are reversed, adds nothing.
    void add(const FrameRange& range);
    /// What the ranges cover, as `mergeRanges` gives it. Call it once.
    Coverage take() { return mergeRanges(std::move(ranges_)); }

  private:
    std::vector<FrameRange> ranges_;
    std::size_t limit_ = 0; // so many are kept before they are merged
};

/// The stretches of [0, length) that the ranges leave open, in order. The ranges may overlap and
/// come in any order.
///     given  [20,30) [5,10), 40     gives  [0,5) [10,20) [30,40)
std::vector<FrameRange> uncoveredRanges(std::vector<FrameRange> ranges, std::int64_t length);

/// The one range of a coverage that holds `range` whole; null when none does.
const FrameRange* rangeContaining(const Coverage& coverage, const FrameRange& range);

} // namespace shotweaver
