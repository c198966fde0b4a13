#pragma once

#include "engine/FrameRange.h"

#include <cstdint>

namespace shotweaver {

/// Which frames of a project a timeline shows, and where. Always a part of the project; frames
/// between whole ones are on the way.
class TimelineAxis {
  public:
    /// The place of the frames, in pixels, and how many frames there are, at least 1. What was on
    /// show stays as far as it can.
    void setPlace(double left, double width);
    void setLength(std::int64_t length);

    double left() const { return left_; }
    double width() const { return width_; }
    std::int64_t length() const { return length_; }
    double firstFrame() const { return first_; }
    double shownFrames() const { return shown_; }
    double framesPerPixel() const { return shown_ / width_; }
    bool isZoomed() const { return shown_ < static_cast<double>(length_); }

    double x(double frame) const { return left_ + (frame - first_) / framesPerPixel(); }
    double frameAt(double x) const { return first_ + (x - left_) * framesPerPixel(); }
    /// The frame under a place, inside of the project.
    std::int64_t wholeFrameAt(double x) const;
    /// Whole frames that are at least partly on show.
    FrameRange shown() const;

    /// Shows fewer frames (a factor above 1) or more, with the frame at `x` where it is. Never
    /// fewer than some, and never more than all.
    void zoom(double factor, double x);
    void showAll();
    void scrollTo(double firstFrame);
    /// Scrolls as little as brings a range into view, its start first.
    void reveal(const FrameRange& range);

  private:
    double left_ = 0;
    double width_ = 1;
    std::int64_t length_ = 1;
    double first_ = 0;
    double shown_ = 1;
};

} // namespace shotweaver
