#include "editor/views/preview/TimelineAxis.h"

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

constexpr double fewestFrames = 25; // that are shown at once, where there are so many

} // namespace

void TimelineAxis::setPlace(double left, double width) {
    left_ = left;
    width_ = std::max(width, 1.0);
}

void TimelineAxis::setLength(std::int64_t length) {
    if (length == length_) return;
    length_ = std::max<std::int64_t>(length, 1);
    showAll();
}

std::int64_t TimelineAxis::wholeFrameAt(double x) const {
    const auto frame = static_cast<std::int64_t>(std::floor(frameAt(x)));
    return std::clamp<std::int64_t>(frame, 0, length_ - 1);
}

FrameRange TimelineAxis::shown() const {
    return {static_cast<std::int64_t>(std::floor(first_)),
            static_cast<std::int64_t>(std::ceil(first_ + shown_))};
}

void TimelineAxis::zoom(double factor, double x) {
    const double all = static_cast<double>(length_);
    const double frame = frameAt(x);
    shown_ = std::clamp(shown_ / factor, std::min(fewestFrames, all), all);
    scrollTo(frame - (x - left_) * framesPerPixel());
}

void TimelineAxis::showAll() {
    first_ = 0;
    shown_ = static_cast<double>(length_);
}

void TimelineAxis::scrollTo(double firstFrame) {
    first_ = std::clamp(firstFrame, 0.0, static_cast<double>(length_) - shown_);
}

void TimelineAxis::reveal(const FrameRange& range) {
    const auto start = static_cast<double>(range.lowerBound);
    const auto end = static_cast<double>(range.upperBound);
    if (end > first_ + shown_) scrollTo(end - shown_);
    if (start < first_) scrollTo(start);
}

} // namespace shotweaver
