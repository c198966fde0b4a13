#include "editor/views/preview/Timeline.h"

#include "widgets/Accessibility.h"
#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"

#include <QAccessibleWidget>
#include <QGestureEvent>
#include <QHelpEvent>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QNativeGestureEvent>
#include <QPinchGesture>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

/// To a screen reader the timeline's description is what it shows and what is selected in it.
class AccessibleTimeline : public QAccessibleWidget {
  public:
    explicit AccessibleTimeline(Timeline* timeline)
        : QAccessibleWidget(timeline, QAccessible::Chart), timeline_(timeline) {}

    QString text(QAccessible::Text which) const override {
        return which == QAccessible::Description ? timeline_->description()
                                                 : QAccessibleWidget::text(which);
    }
    int childCount() const override { return 0; }

  private:
    Timeline* timeline_;
};

constexpr double zoomStep = 1.5;

// Lanes that are seen at once, with little room and with enough.
constexpr std::size_t fewestLanes = 6;
constexpr std::size_t mostLanes = 12;

} // namespace

Timeline::Timeline(ContentView& editor, QWidget* parent)
    : QAbstractScrollArea(parent), editor_(editor) {
    installAccessible<Timeline, AccessibleTimeline>();
    setObjectName(QStringLiteral("timeline"));
    setAccessibleName(QStringLiteral("Timeline"));
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    setFont(style::font(style::TextStyle::caption));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    // Always there, so that zooming moves nothing; it says what part is on show.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setAutoFillBackground(false);
    viewport()->grabGesture(Qt::PinchGesture);
    refresh();
}

void Timeline::setSelectionModel(QItemSelectionModel* selection) {
    selection_ = selection;
    const auto changed = [this] { selectionDidChange(); };
    connect(selection, &QItemSelectionModel::selectionChanged, this, changed);
    connect(selection, &QItemSelectionModel::currentRowChanged, this, changed);
    // Which clears the selection without a word.
    connect(selection->model(), &QAbstractItemModel::modelReset, this, changed);
}

void Timeline::selectionDidChange() {
    viewport()->update();
    if (const int row = currentRow(); row >= 0) reveal(static_cast<std::size_t>(row));
    if (!QAccessible::isActive()) return;
    QAccessibleEvent event(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&event);
}

void Timeline::refresh() {
    const EditRevision* const edit = editor_.fields().shownEdit();
    const bool isOther = edit && (edit->id != edit_ || project_ != editor_.fields().project);
    if (edit && (isOther || kept_ != editor_.fields().kept)) {
        kept_ = editor_.fields().kept;
        // Kept shots may fill gaps.
        marks_ =
            timelineMarks(*edit, *editor_.fields().project, editor_.coverageContent().gaps.ranges);
        viewport()->update();
    }
    if (!isOther) return;
    project_ = editor_.fields().project;
    edit_ = edit->id;
    lanes_ = cutLanes(edit->cuts, *project_);
    laneOfRow_.assign(edit->cuts.size(), lanes_.size());
    for (std::size_t lane = 0; lane < lanes_.size(); ++lane)
        for (const std::size_t row : lanes_[lane].rows)
            laneOfRow_[row] = lane;
    widestLabel_ = 0;
    const QFontMetricsF metrics(font());
    for (const CutLane& lane : lanes_)
        widestLabel_ = std::max(widestLabel_, metrics.horizontalAdvance(toQt(lane.camera)));
    axis_.setLength(project_->engine.length);
    updateGeometry();
    setMaximumHeight(heightOf(mostLanes));
    updateAxis();
}

QSize Timeline::sizeHint() const {
    return {style::scaled(200), heightOf(fewestLanes)};
}

void Timeline::zoom(double factor, double x) {
    axis_.zoom(factor, x);
    updateBars();
}

int Timeline::currentRow() const {
    return selection_ ? selection_->currentIndex().row() : -1;
}

QString Timeline::description() const {
    QString text = toQt(timelineSummary(lanes_, laneOfRow_.size()));
    if (const int row = currentRow(); row >= 0)
        text += QStringLiteral(". ") + toQt(editor_.cutLine(static_cast<std::size_t>(row))) +
                QStringLiteral(". ") + toQt(editor_.cutReason(static_cast<std::size_t>(row)));
    return text;
}

std::string Timeline::textAt(QPointF position) const {
    if (const TimelineMark* const mark = markAt(position)) return mark->text;
    const auto row = rowAt(position);
    return row ? editor_.cutLine(*row) + "\n" + editor_.cutReason(*row) : gapAt(position);
}

void Timeline::select(int row, Qt::KeyboardModifiers modifiers) {
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
    Q_EMIT rowChosen(row);
}

/// Selects all from the anchor to a row.
void Timeline::selectTo(int row) {
    const QAbstractItemModel& model = *selection_->model();
    selection_->select(QItemSelection(model.index(std::min(anchor_, row), 0),
                                      model.index(std::max(anchor_, row), 0)),
                       QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    selection_->setCurrentIndex(model.index(row, 0), QItemSelectionModel::NoUpdate);
    Q_EMIT rowChosen(row);
}

bool Timeline::viewportEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::ToolTip: {
        const auto* const help = static_cast<QHelpEvent*>(event);
        // Only for this pixel: the next one may show something else.
        QToolTip::showText(help->globalPos(), plainToolTip(textAt(help->pos())), viewport(),
                           QRect(help->pos(), QSize(1, 1)));
        return true;
    }
    case QEvent::NativeGesture: {
        const auto* const gesture = static_cast<QNativeGestureEvent*>(event);
        if (gesture->gestureType() != Qt::ZoomNativeGesture) break;
        zoom(1 + gesture->value(), gesture->position().x());
        return true;
    }
    case QEvent::Gesture: {
        const QGesture* const gesture =
            static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture);
        if (!gesture) break;
        const auto& pinch = *static_cast<const QPinchGesture*>(gesture);
        zoom(pinch.scaleFactor(), viewport()->mapFromGlobal(pinch.centerPoint().toPoint()).x());
        return true;
    }
    default:
        break;
    }
    return QAbstractScrollArea::viewportEvent(event);
}

/// In a lane a cut of that camera, anywhere else the one that is on screen at that time.
void Timeline::mousePressEvent(QMouseEvent* event) {
    auto row = rowAt(event->position());
    if (!row && event->position().x() >= axis_.left()) row = rowAtX(event->position().x());
    if (!row || !selection_) return;
    const int index = static_cast<int>(*row);
    // A menu is for what is selected, or else for what is pointed at.
    if (event->button() == Qt::LeftButton)
        select(index, event->modifiers());
    else if (event->button() == Qt::RightButton && !selection_->isRowSelected(index, {}))
        select(index);
}

void Timeline::mouseMoveEvent(QMouseEvent* event) {
    const auto row = rowAtX(event->position().x());
    if (event->buttons().testFlag(Qt::LeftButton) && row && selection_ && anchor_ >= 0)
        selectTo(static_cast<int>(*row));
}

/// With Ctrl it zooms; else it scrolls the lanes, or where all of them are seen, the time.
void Timeline::wheelEvent(QWheelEvent* event) {
    const QPoint turned = event->angleDelta();
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        constexpr double notch = 120; // of a wheel, in Qt's units
        zoom(std::pow(zoomStep, turned.y() / notch), event->position().x());
        return event->accept();
    }
    const bool isAcross = std::abs(turned.x()) > std::abs(turned.y()) ||
                          event->modifiers().testFlag(Qt::ShiftModifier) ||
                          verticalScrollBar()->maximum() == 0;
    if (isAcross && !axis_.isZoomed()) return event->ignore();
    QScrollBar* const bar = isAcross ? horizontalScrollBar() : verticalScrollBar();
    const int delta = turned.y() != 0 ? turned.y() : turned.x();
    constexpr int notchesAPage = 8;
    bar->setValue(bar->value() - delta * bar->pageStep() / (120 * notchesAPage));
    event->accept();
}

void Timeline::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers shift = event->modifiers() & Qt::ShiftModifier;
    const int row = currentRow();
    const QRectF cut = row < 0 ? QRectF() : rowRect(static_cast<std::size_t>(row));
    const double middle = cut.isNull() ? axis_.left() + axis_.width() / 2 : cut.center().x();
    switch (event->key()) {
    case Qt::Key_Left:
        return select(row - 1, shift);
    case Qt::Key_Right:
        return select(row + 1, shift);
    case Qt::Key_Home:
        return select(0, shift);
    case Qt::Key_End:
        return select(selection_ ? selection_->model()->rowCount() - 1 : 0, shift);
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoom(zoomStep, middle);
    case Qt::Key_Minus:
        return zoom(1 / zoomStep, middle);
    case Qt::Key_0:
        axis_.showAll();
        return updateBars();
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

} // namespace shotweaver
