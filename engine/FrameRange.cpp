#include "engine/FrameRange.h"

#include <algorithm>

namespace shotweaver {

namespace {

/// Sorts by lowerBound. Clips stand in order in nearly every angle.
void sortByStart(std::vector<FrameRange>& ranges) {
    const auto startsEarlier = [](const FrameRange& a, const FrameRange& b) {
        return a.lowerBound < b.lowerBound;
    };
    if (!std::is_sorted(ranges.begin(), ranges.end(), startsEarlier))
        std::sort(ranges.begin(), ranges.end(), startsEarlier);
}

} // namespace

Coverage mergeRanges(std::vector<FrameRange> ranges) {
    sortByStart(ranges);
    Coverage merged;
    for (const FrameRange& range : ranges) {
        if (!merged.empty() && merged.back().upperBound >= range.lowerBound)
            merged.back().upperBound = std::max(merged.back().upperBound, range.upperBound);
        else
            merged.push_back(range);
    }
    return merged;
}

void CoverageBuilder::add(const FrameRange& range) {
    if (range.lowerBound >= range.upperBound) return;
    FrameRange* const last = ranges_.empty() ? nullptr : &ranges_.back();
    // Most clips begin where the one before ends.
    if (last && last->lowerBound <= range.lowerBound && range.lowerBound <= last->upperBound) {
        last->upperBound = std::max(last->upperBound, range.upperBound);
        return;
    }
    if (ranges_.size() == limit_) {
        constexpr std::size_t leastLimit = 50'000;
        ranges_ = mergeRanges(std::move(ranges_));
        limit_ = std::max(2 * ranges_.size(), leastLimit);
    }
    ranges_.push_back(range);
}

std::vector<FrameRange> uncoveredRanges(std::vector<FrameRange> ranges, std::int64_t length) {
    sortByStart(ranges);
    std::vector<FrameRange> open;
    std::int64_t cursor = 0;
    for (const FrameRange& range : ranges) {
        const std::int64_t lower = std::min(range.lowerBound, length);
        if (lower > cursor) open.push_back({cursor, lower});
        cursor = std::max(std::min(range.upperBound, length), cursor);
    }
    if (cursor < length) open.push_back({cursor, length});
    return open;
}

const FrameRange* rangeContaining(const Coverage& coverage, const FrameRange& range) {
    const auto after = std::upper_bound(
        coverage.begin(), coverage.end(), range.lowerBound,
        [](std::int64_t frame, const FrameRange& each) { return frame < each.lowerBound; });
    if (after == coverage.begin()) return nullptr;
    const FrameRange& candidate = *std::prev(after);
    return candidate.contains(range) ? &candidate : nullptr;
}

} // namespace shotweaver
