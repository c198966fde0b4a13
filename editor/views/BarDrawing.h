#pragma once

#include "engine/FrameRange.h"
#include "widgets/Style.h"

#include <QRectF>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

class QColor;
class QPainter;

namespace shotweaver {

/// How all bars show ranges of the project: `area`, in pixels, stands for the frames 0 to `length`.
struct BarAxis {
    QRectF area;
    std::int64_t length = 1;           // frames, at least 1
    double point = style::scaled(1.0); // in pixels
};

/// A range's place on the bar, at least 1 point wide: a short range at the very end stands out by
/// less than a point, for which the widget leaves room.
QRectF barRect(const BarAxis& axis, const FrameRange& range);

/// The range drawn at `x`, by its position among `ranges`: sorted, not overlapping. Where several
/// narrow ones share a point it is the last, which lies on top.
std::optional<std::size_t> rangeAt(const BarAxis& axis, const std::vector<FrameRange>& ranges,
                                   double x);

/// Draws a bar's background, and ranges as rounded rectangles.
void drawBarBackground(QPainter& painter, const BarAxis& axis);
void drawBarRanges(QPainter& painter, const BarAxis& axis, const std::vector<FrameRange>& ranges,
                   const QColor& colour);

} // namespace shotweaver
