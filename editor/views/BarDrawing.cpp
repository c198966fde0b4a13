#include "editor/views/BarDrawing.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& colour) {
    radius = std::min({radius, rect.width() / 2, rect.height() / 2});
    // Nobody sees the corners of these, which come by the thousand.
    if (radius <= 1) return painter.fillRect(rect, colour);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(rect, radius, radius);
}

double cornerRadius(const BarAxis& axis) {
    return 3 * axis.point;
}

} // namespace

QRectF barRect(const BarAxis& axis, const FrameRange& range) {
    const double perFrame = axis.area.width() / static_cast<double>(axis.length);
    const double width = static_cast<double>(range.length()) * perFrame;
    return {axis.area.left() + static_cast<double>(range.lowerBound) * perFrame, axis.area.top(),
            std::max(width, axis.point), axis.area.height()};
}

std::optional<std::size_t> rangeAt(const BarAxis& axis, const std::vector<FrameRange>& ranges,
                                   double x) {
    const auto next =
        std::partition_point(ranges.begin(), ranges.end(), [&](const FrameRange& range) {
            return barRect(axis, range).left() <= x;
        });
    if (next == ranges.begin() || x >= barRect(axis, *(next - 1)).right()) return std::nullopt;
    return static_cast<std::size_t>(next - 1 - ranges.begin());
}

void drawBarBackground(QPainter& painter, const BarAxis& axis) {
    fillRounded(painter, axis.area, cornerRadius(axis), style::barBackground());
}

void drawBarRanges(QPainter& painter, const BarAxis& axis, const std::vector<FrameRange>& ranges,
                   const QColor& colour) {
    double drawnTo = axis.area.left();
    for (const FrameRange& range : ranges) {
        const QRectF rect = barRect(axis, range);
        // A thousand ranges of a point look like those of them that show a quarter of one more.
        if (rect.width() <= axis.point && rect.right() - drawnTo < axis.point / 4) continue;
        drawnTo = rect.right();
        fillRounded(painter, rect, cornerRadius(axis), colour);
    }
}

} // namespace shotweaver
