#include "editor/views/preview/EditOverview.h"

#include "planning/CutPoints.h"
#include "widgets/Accessibility.h"
#include "widgets/Padlock.h"
#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

/// To a screen reader the overview's value is what is selected in it.
class AccessibleOverview : public QAccessibleWidget {
  public:
    explicit AccessibleOverview(EditOverview* overview)
        : QAccessibleWidget(overview, QAccessible::Chart), overview_(overview) {}

    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Value ? overview_->selectionText()
                                           : QAccessibleWidget::text(which);
    }

  private:
    EditOverview* overview_;
};

double outline() {
    return style::scaled(style::tight);
}

double pitchFor(std::size_t lanes) {
    const double count = static_cast<double>(std::max<std::size_t>(lanes, 1));
    return std::min<double>(style::scaled(20), style::scaled(160) / count);
}

} // namespace

EditOverview::EditOverview(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor) {
    installAccessible<EditOverview, AccessibleOverview>();
    setObjectName(QStringLiteral("overview"));
    setAccessibleName(QStringLiteral("Edit overview"));
    setFocusPolicy(Qt::StrongFocus);
    setFont(style::font(style::TextStyle::caption));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    refresh();
}

void EditOverview::setSelectionModel(QItemSelectionModel* selection) {
    selection_ = selection;
    const auto changed = [this] { selectionDidChange(); };
    connect(selection, &QItemSelectionModel::selectionChanged, this, changed);
    connect(selection, &QItemSelectionModel::currentRowChanged, this, changed);
    // Which clears the selection without a word.
    connect(selection->model(), &QAbstractItemModel::modelReset, this, changed);
}

void EditOverview::selectionDidChange() {
    update();
    if (!QAccessible::isActive()) return;
    QAccessibleValueChangeEvent event(this, selectionText());
    QAccessible::updateAccessibility(&event);
}

void EditOverview::refresh() {
    const Project* const project = editor_.project();
    if (!project) return;
    std::vector<CutLane> lanes = cutLanes(editor_.fields().cuts(), *project);
    const std::int64_t length = project->engine.length;
    refreshTicks();
    if (lanes == lanes_ && length == length_ && kept_ == editor_.fields().kept) return;
    kept_ = editor_.fields().kept;
    lanes_ = std::move(lanes);
    length_ = length;
    widestLabel_ = 0;
    const QFontMetricsF metrics(font());
    for (const CutLane& lane : lanes_)
        widestLabel_ = std::max(widestLabel_, metrics.horizontalAdvance(toQt(lane.camera)));
    setFixedHeight(static_cast<int>(pitch() * static_cast<double>(lanes_.size()) + ticksHeight() +
                                    2 * outline()));
    update();
}

void EditOverview::refreshTicks() {
    const EditRevision* const edit = editor_.fields().shownEdit();
    if (!edit) return;
    std::vector<std::int64_t> points = cutPoints(edit->settings, *editor_.project());
    std::vector<CameraNote> notes;
    if (edit->settings.followMarkers) notes = editor_.project()->markers.notes;
    if (points == points_ && notes == notes_) return;
    points_ = std::move(points);
    notes_ = std::move(notes);
    lanes_.clear(); // which may move
}

double EditOverview::ticksHeight() const {
    return points_.empty() && notes_.empty() ? 0 : style::scaled(8);
}

BarAxis EditOverview::ticksAxis() const {
    BarAxis axis = axisOf(0);
    axis.area.setTop(outline());
    axis.area.setHeight(ticksHeight());
    return axis;
}

/// The followed marker whose tick is at a position, or near.
const CameraNote* EditOverview::noteAtPlace(QPointF position) const {
    const BarAxis axis = ticksAxis();
    if (position.y() > axis.area.bottom()) return nullptr;
    const auto found = std::find_if(notes_.begin(), notes_.end(), [&](const CameraNote& note) {
        const double x = barRect(axis, {note.frame, note.frame + 1}).center().x();
        return std::abs(x - position.x()) <= style::scaled(style::tight);
    });
    return found == notes_.end() ? nullptr : &*found;
}

double EditOverview::pitch() const {
    return pitchFor(lanes_.size());
}

/// None where the lanes are too thin for text.
int EditOverview::labelWidth() const {
    if (fontMetrics().height() > pitch()) return 0;
    const int whole = static_cast<int>(std::ceil(widestLabel_)) + 1 + style::scaled(style::close);
    return std::min(whole, width() / 3);
}

QRectF EditOverview::laneRect(std::size_t lane) const {
    return {outline(), outline() + ticksHeight() + pitch() * static_cast<double>(lane),
            width() - 2 * outline(), pitch()};
}

BarAxis EditOverview::axisOf(std::size_t lane) const {
    BarAxis axis;
    const double gap = std::max(axis.point, pitch() / 4);
    axis.area = laneRect(lane).adjusted(labelWidth(), gap / 2, -axis.point, -gap / 2);
    axis.length = length_;
    return axis;
}

std::optional<std::size_t> EditOverview::rowAt(QPointF position) const {
    const double lane = (position.y() - outline() - ticksHeight()) / pitch();
    if (lane < 0 || lane >= static_cast<double>(lanes_.size())) return std::nullopt;
    const auto index = static_cast<std::size_t>(lane);
    const auto range = rangeAt(axisOf(index), lanes_[index].ranges, position.x());
    if (!range) return std::nullopt;
    return lanes_[index].rows[*range];
}

QRectF EditOverview::rowRect(std::size_t row) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        const std::vector<std::size_t>& rows = lanes_[lane].rows;
        const auto found = std::lower_bound(rows.begin(), rows.end(), row);
        if (found == rows.end() || *found != row) continue;
        return barRect(axisOf(lane),
                       lanes_[lane].ranges[static_cast<std::size_t>(found - rows.begin())]);
    }
    return {};
}

int EditOverview::currentRow() const {
    return selection_ ? selection_->currentIndex().row() : -1;
}

QString EditOverview::selectionText() const {
    const int row = currentRow();
    return row < 0 ? QString() : toQt(editor_.cutLine(static_cast<std::size_t>(row)));
}

void EditOverview::select(int row, Qt::KeyboardModifiers modifiers) {
    if (!selection_) return;
    const int rows = selection_->model()->rowCount();
    if (rows == 0) return;
    row = std::clamp(row, 0, rows - 1);
    if (modifiers.testFlag(Qt::ShiftModifier) && anchor_ >= 0 && anchor_ < rows)
        return selectTo(row);
    anchor_ = row;
    const auto command = modifiers.testFlag(Qt::ControlModifier)
                             ? QItemSelectionModel::Toggle
                             : QItemSelectionModel::ClearAndSelect;
    selection_->setCurrentIndex(selection_->model()->index(row, 0),
                                command | QItemSelectionModel::Rows);
}

/// Selects all from the anchor to a row.
void EditOverview::selectTo(int row) {
    const QAbstractItemModel& model = *selection_->model();
    selection_->select(QItemSelection(model.index(std::min(anchor_, row), 0),
                                      model.index(std::max(anchor_, row), 0)),
                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    selection_->setCurrentIndex(model.index(row, 0), QItemSelectionModel::NoUpdate);
}

/// The cut that is on screen at a place, on whatever lane.
std::optional<std::size_t> EditOverview::rowAtX(double x) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane)
        if (const auto range = rangeAt(axisOf(lane), lanes_[lane].ranges, x))
            return lanes_[lane].rows[*range];
    return std::nullopt;
}

bool EditOverview::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const auto row = rowAt(help->pos());
    if (const CameraNote* const note = noteAtPlace(help->pos())) {
        QToolTip::showText(help->globalPos(), plainToolTip(noteLine(*note, *editor_.project())),
                           this);
        return true;
    }
    if (!row) {
        QToolTip::hideText();
        event->ignore();
        return true;
    }
    const std::string text = editor_.cutLine(*row) + "\n" + editor_.cutReason(*row);
    QToolTip::showText(help->globalPos(), plainToolTip(text), this, rowRect(*row).toAlignedRect());
    return true;
}

void EditOverview::mousePressEvent(QMouseEvent* event) {
    const auto row = rowAt(event->position());
    if (!row || !selection_) return;
    const int index = static_cast<int>(*row);
    // A menu is for what is selected, or else for what is pointed at.
    if (event->button() == Qt::LeftButton)
        select(index, event->modifiers());
    else if (event->button() == Qt::RightButton && !selection_->isRowSelected(index, {}))
        select(index);
}

void EditOverview::mouseMoveEvent(QMouseEvent* event) {
    const auto row = rowAtX(event->position().x());
    if (event->buttons().testFlag(Qt::LeftButton) && row && selection_ && anchor_ >= 0)
        selectTo(static_cast<int>(*row));
}

void EditOverview::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Left:
        return select(currentRow() - 1, event->modifiers() & Qt::ShiftModifier);
    case Qt::Key_Right:
        return select(currentRow() + 1, event->modifiers() & Qt::ShiftModifier);
    case Qt::Key_Home:
        return select(0, event->modifiers() & Qt::ShiftModifier);
    case Qt::Key_End:
        return select(selection_ ? selection_->model()->rowCount() - 1 : 0,
                      event->modifiers() & Qt::ShiftModifier);
    default:
        QWidget::keyPressEvent(event);
    }
}

void EditOverview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QItemSelection selected = selection_ ? selection_->selection() : QItemSelection();
    for (const QItemSelectionRange& range : selected)
        drawBand(painter, range.top(), range.bottom());
    drawLabels(painter);
    drawTicks(painter);
    drawLanes(painter);
    for (const QItemSelectionRange& range : selected)
        drawCuts(painter, range.top(), range.bottom());
    drawPadlocks(painter);
    if (!hasFocus()) return;
    painter.setPen(style::accent());
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

/// Marks rows across all lanes, so that also a single short cut is found.
void EditOverview::drawBand(QPainter& painter, int first, int last) const {
    QRectF cuts = rowRect(static_cast<std::size_t>(first)) | //
                  rowRect(static_cast<std::size_t>(last));
    const double missing = std::max(0.0, style::scaled(5) - cuts.width());
    cuts.adjust(-missing / 2, 0, missing / 2, 0);
    cuts.setTop(outline());
    cuts.setBottom(height() - outline());
    painter.fillRect(cuts, palette().color(QPalette::Highlight));
}

void EditOverview::drawLabels(QPainter& painter) const {
    const int labels = labelWidth();
    if (labels == 0) return;
    painter.setPen(style::secondary());
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        QRectF rect = laneRect(lane);
        rect.setWidth(labels - style::scaled(style::close));
        painter.drawText(rect, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine,
                         fontMetrics().elidedText(toQt(lanes_[lane].camera), Qt::ElideRight,
                                                  static_cast<int>(rect.width())));
    }
}

/// Low ones for cut points and whole ones for followed markers, a tick a pixel at most.
void EditOverview::drawTicks(QPainter& painter) const {
    const BarAxis axis = ticksAxis();
    const double framesPerPixel = static_cast<double>(length_) / std::max(axis.area.width(), 1.0);
    const auto draw = [&](const std::vector<std::int64_t>& frames, double top,
                          const QColor& colour) {
        for (auto frame = frames.begin(); frame != frames.end();
             frame = std::upper_bound(frame, frames.end(), *frame + std::llround(framesPerPixel))) {
            const double x = barRect(axis, {*frame, *frame + 1}).center().x();
            painter.fillRect(QRectF(x - axis.point / 2, top, axis.point, axis.area.bottom() - top),
                             colour);
        }
    };
    std::vector<std::int64_t> notes;
    for (const CameraNote& note : notes_)
        notes.push_back(note.frame);
    draw(points_, axis.area.center().y(), style::secondary());
    draw(notes, axis.area.top(), style::text());
}

void EditOverview::drawLanes(QPainter& painter) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        const BarAxis axis = axisOf(lane);
        drawBarBackground(painter, axis);
        drawBarRanges(painter, axis, lanes_[lane].ranges, style::accent());
    }
}

/// Draws selected rows once more, brighter.
void EditOverview::drawCuts(QPainter& painter, int first, int last) const {
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane) {
        const auto& [camera, ranges, rows] = lanes_[lane];
        const auto from = std::lower_bound(rows.begin(), rows.end(), first) - rows.begin();
        const auto to = std::upper_bound(rows.begin(), rows.end(), last) - rows.begin();
        drawBarRanges(painter, axisOf(lane), {ranges.begin() + from, ranges.begin() + to},
                      style::text());
    }
}

/// On the kept cuts, where the lane is high enough.
void EditOverview::drawPadlocks(QPainter& painter) const {
    const double size = style::scaled(8);
    const std::vector<Cut>& cuts = editor_.fields().cuts();
    if (kept_.empty() || pitch() < size) return;
    for (std::size_t row = 0; row < cuts.size(); ++row) {
        if (!kept_.contains(cuts[row].id)) continue;
        const QRectF bar = rowRect(row);
        if (!bar.isNull())
            drawPadlock(painter,
                        {bar.center().x() - size / 2, bar.center().y() - size / 2, size, size},
                        style::background());
    }
}

} // namespace shotweaver
