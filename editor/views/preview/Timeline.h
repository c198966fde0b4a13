#pragma once

#include "editor/ContentView.h"
#include "editor/TimelineContent.h"
#include "editor/views/preview/TimelineAxis.h"

#include <QAbstractScrollArea>

#include <cstddef>
#include <optional>
#include <vector>

class QItemSelectionModel;

namespace shotweaver {

/// The cuts on show on the project's time: a ruler, marks, and a lane for each camera in its
/// colour. It shares the cut list's selection: a click selects a cut, and so do Left, Right, Home
/// and End. With Shift they select all from the one before to it, as dragging does, and a click
/// with Ctrl adds a cut to the selection or takes it out. The wheel with Ctrl, a pinch, and the
/// keys plus, minus and 0 zoom.
class Timeline : public QAbstractScrollArea {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit Timeline(ContentView& editor, QWidget* parent = nullptr);

    /// Rows are those of the cut list. The selection must outlive the view.
    void setSelectionModel(QItemSelectionModel* selection);
    void refresh();

    /// With a few lanes. It takes room for more up to its maximum; others are scrolled.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    const TimelineAxis& axis() const { return axis_; }
    /// The cut drawn at a position of the viewport, as its row in the cut list.
    std::optional<std::size_t> rowAt(QPointF position) const;
    /// Where a row's cut is drawn in the viewport, also where it is scrolled out of it; null when
    /// no lane shows it.
    QRectF rowRect(std::size_t row) const;
    /// What is told at a position: a mark or a cut, and why it is there. Empty for nothing.
    std::string textAt(QPointF position) const;
    /// What is on show, and the current row, in words.
    QString description() const;

  Q_SIGNALS:
    /// The user has chosen a row here.
    void rowChosen(int row);

  protected:
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    // Places, in pixels of the viewport.
    double marksTop() const;
    double lanesTop() const;
    QRectF lanesRect() const;
    QRectF laneRect(std::size_t lane) const;
    QRectF markRect(const TimelineMark& mark) const;
    const TimelineMark* markAt(QPointF position) const;
    std::optional<std::size_t> laneAt(QPointF position) const;
    std::string gapAt(QPointF position) const; // of its lane, in words
    int labelWidth() const;
    int heightOf(std::size_t lanes) const;
    void updateAxis();
    void updateBars();
    void zoom(double factor, double x);

    // Selecting.
    int currentRow() const; // -1 without one
    std::optional<std::size_t> rowAtX(double x) const;
    void select(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void selectTo(int row);
    void selectionDidChange();
    void reveal(std::size_t row);

    // Drawing.
    void drawBand(QPainter& painter, int first, int last) const;
    void drawLabels(QPainter& painter) const;
    void drawRuler(QPainter& painter) const;
    void drawMarks(QPainter& painter) const;
    void drawLanes(QPainter& painter) const;
    void drawGaps(QPainter& painter, const QRectF& lane, const Coverage& gaps) const;
    void drawCuts(QPainter& painter, int first, int last) const;
    void drawKept(QPainter& painter) const;

    ContentView& editor_;
    QItemSelectionModel* selection_ = nullptr;
    TimelineAxis axis_;
    // What is on show. A revision never changes, so its identifier tells it.
    std::shared_ptr<const Project> project_;
    UUID edit_;
    std::vector<CutLane> lanes_;
    std::vector<std::size_t> laneOfRow_;
    std::vector<TimelineMark> marks_;
    KeptShots kept_;
    double widestLabel_ = 0; // pixels
    int anchor_ = -1;        // row from which Shift and dragging select
};

} // namespace shotweaver
