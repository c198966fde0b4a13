#include "editor/views/preview/LaneDrawing.h"
#include "editor/views/preview/Timeline.h"
#include "widgets/FocusOutline.h"
#include "widgets/Padlock.h"
#include "widgets/Style.h"
#include "widgets/Swatch.h"

#include <QItemSelectionModel>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

// Points.
constexpr int lanePitch = 15;
constexpr int rulerHeight = 24;
constexpr int marksHeight = 12;
constexpr int swatchSide = 8;

double pitch() {
    return style::scaled(lanePitch);
}

/// Pixels around it all, for the focus outline.
double outline() {
    return style::scaled(2);
}

} // namespace

double Timeline::marksTop() const {
    return outline() + style::scaled(rulerHeight);
}

double Timeline::lanesTop() const {
    return marksTop() + style::scaled(marksHeight);
}

QRectF Timeline::lanesRect() const {
    return {outline(), lanesTop(), viewport()->width() - 2 * outline(),
            viewport()->height() - lanesTop() - outline()};
}

QRectF Timeline::laneRect(std::size_t lane) const {
    const double top = lanesTop() + pitch() * static_cast<double>(lane) - //
                       verticalScrollBar()->value();
    const double gap = style::scaled(3);
    return {outline(), top + gap / 2, viewport()->width() - 2 * outline(), pitch() - gap};
}

QRectF Timeline::rowRect(std::size_t row) const {
    const std::vector<Cut>& cuts = editor_.fields().cuts();
    if (row >= laneOfRow_.size() || row >= cuts.size() || laneOfRow_[row] == lanes_.size())
        return {};
    QRectF rect = laneRect(laneOfRow_[row]);
    const double left = axis_.x(static_cast<double>(cuts[row].start));
    const double right = axis_.x(static_cast<double>(cuts[row].start + cuts[row].duration));
    rect.setLeft(left);
    rect.setWidth(std::max(right - left, 1.0));
    return rect;
}

/// A line for what has no length, as high as its kind stands out.
QRectF Timeline::markRect(const TimelineMark& mark) const {
    const double top = marksTop();
    const double height = style::scaled(marksHeight) - style::scaled(2);
    const double left = axis_.x(static_cast<double>(mark.range.lowerBound));
    const double right = axis_.x(static_cast<double>(mark.range.upperBound));
    const double line = style::scaled(1.5);
    using Kind = TimelineMark::Kind;
    switch (mark.kind) {
    case Kind::fixedPart:
        return {left, top, std::max(right - left, line), height / 2};
    case Kind::gap:
        return {left, top + height / 2, std::max(right - left, line), height / 2};
    case Kind::cutPoint:
        return {left, top + height * 0.6, style::scaled(1.0) * 1.0, height * 0.4};
    case Kind::note:
        return {left, top, line, height};
    case Kind::chapter:
        break;
    }
    const double side = style::scaled(7);
    return {left - side / 2, top - side, side, side};
}

/// The topmost mark that tells something at a place, or near.
const TimelineMark* Timeline::markAt(QPointF position) const {
    if (position.y() >= lanesTop() || position.x() < axis_.left()) return nullptr;
    const double near = style::scaled(2);
    const auto found = std::find_if(marks_.rbegin(), marks_.rend(), [&](const TimelineMark& mark) {
        return !mark.text.empty() &&
               markRect(mark).adjusted(-near, -near, near, near).contains(position);
    });
    return found == marks_.rend() ? nullptr : &*found;
}

int Timeline::labelWidth() const {
    const int whole = static_cast<int>(std::ceil(widestLabel_)) + 1 +
                      style::scaled(swatchSide + style::tight + style::close);
    return std::min(whole, viewport()->width() / 3);
}

int Timeline::heightOf(std::size_t lanes) const {
    const double rows = static_cast<double>(std::clamp<std::size_t>(lanes_.size(), 1, lanes));
    return static_cast<int>(std::ceil(lanesTop() + rows * pitch() + outline())) +
           horizontalScrollBar()->sizeHint().height();
}

/// Also one pixel for a short cut at the very end.
void Timeline::updateAxis() {
    const double left = outline() + labelWidth();
    axis_.setPlace(left, viewport()->width() - left - outline() - 1);
    updateBars();
}

void Timeline::updateBars() {
    const auto frames = [](double count) { return static_cast<int>(std::lround(count)); };
    const QSignalBlocker across(horizontalScrollBar());
    horizontalScrollBar()->setRange(
        0, frames(static_cast<double>(axis_.length()) - axis_.shownFrames()));
    horizontalScrollBar()->setPageStep(std::max(1, frames(axis_.shownFrames())));
    horizontalScrollBar()->setSingleStep(std::max(1, frames(axis_.shownFrames() / 20)));
    horizontalScrollBar()->setValue(frames(axis_.firstFrame()));
    const double all = pitch() * static_cast<double>(lanes_.size());
    verticalScrollBar()->setRange(0, std::max(0, frames(all - lanesRect().height())));
    verticalScrollBar()->setPageStep(frames(lanesRect().height()));
    verticalScrollBar()->setSingleStep(style::scaled(lanePitch));
    viewport()->update();
}

void Timeline::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    updateAxis();
}

void Timeline::scrollContentsBy(int dx, int) {
    if (dx != 0) axis_.scrollTo(horizontalScrollBar()->value());
    viewport()->update();
}

void Timeline::reveal(std::size_t row) {
    const std::vector<Cut>& cuts = editor_.fields().cuts();
    if (row >= cuts.size() || row >= laneOfRow_.size()) return;
    axis_.reveal({cuts[row].start, cuts[row].start + cuts[row].duration});
    updateBars();
    const QRectF lane = laneRect(laneOfRow_[row]);
    QScrollBar& bar = *verticalScrollBar();
    if (lane.top() < lanesRect().top())
        bar.setValue(bar.value() - static_cast<int>(lanesRect().top() - lane.top() + 1));
    if (lane.bottom() > lanesRect().bottom())
        bar.setValue(bar.value() + static_cast<int>(lane.bottom() - lanesRect().bottom() + 1));
}

std::optional<std::size_t> Timeline::laneAt(QPointF position) const {
    if (!lanesRect().contains(position) || position.x() < axis_.left()) return std::nullopt;
    const double lane = (position.y() - lanesTop() + verticalScrollBar()->value()) / pitch();
    if (lane < 0 || lane >= static_cast<double>(lanes_.size())) return std::nullopt;
    return static_cast<std::size_t>(lane);
}

std::string Timeline::gapAt(QPointF position) const {
    const auto lane = laneAt(position);
    if (!lane) return "";
    const std::int64_t frame = axis_.wholeFrameAt(position.x());
    const Coverage& gaps = lanes_[*lane].gaps;
    const auto gap = std::find_if(gaps.begin(), gaps.end(), [&](const FrameRange& each) {
        return each.lowerBound <= frame && frame < each.upperBound;
    });
    return gap == gaps.end() ? "" : laneGapText(lanes_[*lane], *gap, project_->engine);
}

/// A cut of the lane that is drawn in the pixel.
std::optional<std::size_t> Timeline::rowAt(QPointF position) const {
    const auto lane = laneAt(position);
    if (!lane) return std::nullopt;
    const std::vector<FrameRange>& ranges = lanes_[*lane].ranges;
    const std::vector<std::size_t>& rows = lanes_[*lane].rows;
    const double x = std::floor(position.x());
    const auto next =
        std::partition_point(ranges.begin(), ranges.end(), [&](const FrameRange& range) {
            return axis_.x(static_cast<double>(range.lowerBound)) < x + 1;
        });
    if (next == ranges.begin()) return std::nullopt;
    const auto& range = *(next - 1);
    const double end = std::max(axis_.x(static_cast<double>(range.upperBound)),
                                axis_.x(static_cast<double>(range.lowerBound)) + 1);
    if (end <= x) return std::nullopt;
    return rows[static_cast<std::size_t>(next - 1 - ranges.begin())];
}

/// The cut that is on screen at a place, on whatever lane.
std::optional<std::size_t> Timeline::rowAtX(double x) const {
    const std::vector<Cut>& cuts = editor_.fields().cuts();
    const std::int64_t frame = axis_.wholeFrameAt(x);
    const auto next = std::partition_point(cuts.begin(), cuts.end(),
                                           [&](const Cut& cut) { return cut.start <= frame; });
    if (next == cuts.begin()) return std::nullopt;
    return static_cast<std::size_t>(next - 1 - cuts.begin());
}

void Timeline::paintEvent(QPaintEvent*) {
    if (lanes_.empty() || !editor_.fields().shownEdit()) return;
    QPainter painter(viewport());
    const QItemSelection selected = selection_ ? selection_->selection() : QItemSelection();
    painter.save();
    painter.setClipRect(QRectF(axis_.left() - style::scaled(style::tight), 0,
                               axis_.width() + style::scaled(style::tight) + 2,
                               viewport()->height()));
    for (const QItemSelectionRange& range : selected)
        drawBand(painter, range.top(), range.bottom());
    drawRuler(painter);
    drawMarks(painter);
    painter.restore();
    painter.save();
    painter.setClipRect(lanesRect());
    drawLabels(painter);
    drawLanes(painter);
    for (const QItemSelectionRange& range : selected)
        drawCuts(painter, range.top(), range.bottom());
    drawKept(painter);
    painter.restore();
    if (!hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(style::accent());
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(viewport()->rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

/// Marks rows across all lanes, so that also a single short cut is found.
void Timeline::drawBand(QPainter& painter, int first, int last) const {
    QRectF cuts = rowRect(static_cast<std::size_t>(first)) | //
                  rowRect(static_cast<std::size_t>(last));
    const double missing = std::max(0.0, style::scaled(5) - cuts.width());
    cuts.adjust(-missing / 2, 0, missing / 2, 0);
    cuts.setTop(marksTop());
    cuts.setBottom(viewport()->height() - outline());
    painter.fillRect(cuts, palette().color(QPalette::Highlight));
}

void Timeline::drawRuler(QPainter& painter) const {
    const QFont digits = style::withEqualDigits(font());
    painter.setFont(digits);
    painter.setPen(style::secondary());
    const QFontMetricsF metrics(digits);
    const double apart =
        metrics.horizontalAdvance(QStringLiteral("00:00:00:00")) + style::scaled(12);
    const auto distance =
        std::max<std::int64_t>(1, std::llround(std::ceil(apart * axis_.framesPerPixel())));
    const double bottom = marksTop() - style::scaled(1);
    const double baseline = outline() + metrics.ascent();
    for (const RulerLabel& label : rulerLabels(axis_.shown(), distance, project_->engine)) {
        const double x = axis_.x(static_cast<double>(label.frame));
        painter.fillRect(QRectF(x, bottom - style::scaled(4), 1, style::scaled(4)),
                         style::secondary());
        const QString text = toQt(label.text);
        if (x + metrics.horizontalAdvance(text) <= axis_.left() + axis_.width())
            painter.drawText(QPointF(x, baseline), text);
    }
    painter.setFont(font());
}

/// A line of one kind a pixel at most.
void Timeline::drawMarks(QPainter& painter) const {
    double drawnTo = -1;
    auto drawnKind = TimelineMark::Kind::fixedPart;
    for (const TimelineMark& mark : marks_) {
        const QRectF rect = markRect(mark);
        if (mark.kind == drawnKind && rect.right() < drawnTo + 0.5) continue;
        if (rect.right() < axis_.left() || rect.left() > axis_.left() + axis_.width()) continue;
        drawnTo = rect.right();
        drawnKind = mark.kind;
        switch (mark.kind) {
        case TimelineMark::Kind::fixedPart:
            painter.fillRect(rect, style::help());
            break;
        case TimelineMark::Kind::gap:
            painter.fillRect(rect, style::gap());
            break;
        case TimelineMark::Kind::cutPoint:
            painter.fillRect(rect, style::secondary());
            break;
        case TimelineMark::Kind::note:
            painter.fillRect(rect, style::text());
            break;
        case TimelineMark::Kind::chapter:
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(style::text());
            painter.drawPolygon(QPolygonF{rect.topLeft(), rect.topRight(),
                                          QPointF(rect.center().x(), rect.bottom())});
            painter.setRenderHint(QPainter::Antialiasing, false);
            break;
        }
    }
}

void Timeline::drawLabels(QPainter& painter) const {
    const double side = style::scaled(swatchSide);
    const double indent = side + style::scaled(style::tight);
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        QRectF rect = laneRect(lane);
        painter.fillRect(QRectF(rect.left(), rect.center().y() - side / 2, side, side),
                         distinctColour(lane));
        rect.setLeft(rect.left() + indent);
        rect.setRight(axis_.left() - style::scaled(style::close));
        painter.setPen(style::text());
        // A font may be higher than the lane.
        painter.drawText(rect.adjusted(0, -4, 0, 4),
                         Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         fontMetrics().elidedText(toQt(lanes_[lane].camera), Qt::ElideMiddle,
                                                  static_cast<int>(rect.width())));
    }
}

void Timeline::drawLanes(QPainter& painter) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        const QRectF rect = laneRect(lane);
        painter.fillRect(QRectF(axis_.left(), rect.top(), axis_.width(), rect.height()),
                         style::barBackground());
        drawGaps(painter, rect, lanes_[lane].gaps);
        drawLane(painter, rect, axis_, lanes_[lane].ranges, distinctColour(lane));
    }
}

/// Hatched, where they can be seen.
void Timeline::drawGaps(QPainter& painter, const QRectF& lane, const Coverage& gaps) const {
    const QRectF all(axis_.left(), lane.top(), axis_.width(), lane.height());
    for (const FrameRange& gap : gaps) {
        const double left = axis_.x(static_cast<double>(gap.lowerBound));
        const double right = axis_.x(static_cast<double>(gap.upperBound));
        if (right - left < 1 || right < all.left() || left > all.right()) continue;
        const QRectF rect = all.intersected(QRectF(left, all.top(), right - left, all.height()));
        painter.fillRect(rect, style::background());
        painter.fillRect(rect, QBrush(style::line().lighter(150), Qt::BDiagPattern));
    }
}

/// Draws selected rows once more, brighter.
void Timeline::drawCuts(QPainter& painter, int first, int last) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        const std::vector<FrameRange>& ranges = lanes_[lane].ranges;
        const std::vector<std::size_t>& rows = lanes_[lane].rows;
        const auto from = std::lower_bound(rows.begin(), rows.end(), first) - rows.begin();
        const auto to = std::upper_bound(rows.begin(), rows.end(), last) - rows.begin();
        if (from != to)
            drawLane(painter, laneRect(lane), axis_, {ranges.begin() + from, ranges.begin() + to},
                     style::text());
    }
}

/// A line under the kept cuts, and a padlock where there is room.
void Timeline::drawKept(QPainter& painter) const {
    if (kept_.empty()) return;
    const double size = style::scaled(8);
    const std::vector<Cut>& cuts = editor_.fields().cuts();
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        if (!kept_.contains(cuts[row].id)) continue;
        const QRectF bar = rowRect(row);
        if (bar.isNull() || bar.right() < axis_.left() || bar.left() > axis_.left() + axis_.width())
            continue;
        painter.fillRect(QRectF(bar.left(), bar.bottom(), bar.width(), style::scaled(1.5)),
                         style::text());
        if (bar.width() >= size)
            drawPadlock(painter,
                        {bar.center().x() - size / 2, bar.center().y() - size / 2, size, size},
                        style::background());
    }
}

} // namespace shotweaver
