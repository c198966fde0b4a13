#include "editor/views/preview/LaneDrawing.h"

#include <QImage>
#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace shotweaver {

namespace {

/// How much of each pixel column's time ranges take, 0 to 1.
class Density {
  public:
    Density(const TimelineAxis& axis, double ratio)
        : axis_(axis), ratio_(ratio),
          columns_(static_cast<std::size_t>(std::ceil(axis.width() * ratio))) {}

    void add(const FrameRange& range) {
        const double from = placeOf(range.lowerBound);
        const double to = placeOf(range.upperBound);
        const auto last = std::min(columns_.size(), static_cast<std::size_t>(std::ceil(to)));
        for (auto column = static_cast<std::size_t>(from); column < last; ++column) {
            const auto left = static_cast<double>(column);
            columns_[column] += static_cast<float>(std::min(to, left + 1) - std::max(from, left));
        }
        constexpr double telling = 4; // pixels
        if (from == lastEnd_ && to - from > telling && from < static_cast<double>(columns_.size()))
            columns_[static_cast<std::size_t>(from)] = 0;
        lastEnd_ = to;
    }

    const std::vector<float>& columns() const { return columns_; }

  private:
    /// In device pixels, on show.
    double placeOf(std::int64_t frame) const {
        const double x = (axis_.x(static_cast<double>(frame)) - axis_.left()) * ratio_;
        return std::clamp(x, 0.0, static_cast<double>(columns_.size()));
    }

    const TimelineAxis& axis_;
    double ratio_; // device pixels a pixel
    std::vector<float> columns_;
    double lastEnd_ = 0;
};

/// Those at least partly on show.
std::pair<std::size_t, std::size_t> shownOf(const std::vector<FrameRange>& ranges,
                                            const FrameRange& shown) {
    const auto first =
        std::partition_point(ranges.begin(), ranges.end(), [&](const FrameRange& range) {
            return range.upperBound <= shown.lowerBound;
        });
    const auto last = std::partition_point(first, ranges.end(), [&](const FrameRange& range) {
        return range.lowerBound < shown.upperBound;
    });
    return {static_cast<std::size_t>(first - ranges.begin()),
            static_cast<std::size_t>(last - ranges.begin())};
}

} // namespace

void drawLane(QPainter& painter, const QRectF& lane, const TimelineAxis& axis,
              const std::vector<FrameRange>& ranges, const QColor& colour) {
    constexpr float faintest = 0.3F;
    Density density(axis, painter.device()->devicePixelRatioF());
    const auto [first, last] = shownOf(ranges, axis.shown());
    for (std::size_t i = first; i < last; ++i)
        density.add(ranges[i]);
    QImage row(static_cast<int>(density.columns().size()), 1, QImage::Format_ARGB32);
    auto* pixel = reinterpret_cast<QRgb*>(row.scanLine(0));
    for (const float part : density.columns()) {
        const float opacity = part > 0 ? faintest + (1 - faintest) * std::min(part, 1.0F) : 0;
        *pixel++ = qRgba(colour.red(), colour.green(), colour.blue(),
                         static_cast<int>(std::lround(opacity * 255)));
    }
    painter.drawImage(QRectF(axis.left(), lane.top(), axis.width(), lane.height()), row);
}

} // namespace shotweaver
