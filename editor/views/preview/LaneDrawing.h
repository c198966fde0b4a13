#pragma once

#include "editor/views/preview/TimelineAxis.h"

#include <QRectF>

#include <vector>

class QColor;
class QPainter;

namespace shotweaver {

/// Draws ranges (sorted, not overlapping) of a lane as bars from the top to the bottom of `lane`.
/// Where several share a pixel its opacity tells how much of its time they take, but none
/// vanishes. Bars that touch are told apart where they are wide enough.
void drawLane(QPainter& painter, const QRectF& lane, const TimelineAxis& axis,
              const std::vector<FrameRange>& ranges, const QColor& colour);

} // namespace shotweaver
