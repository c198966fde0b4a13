#pragma once

#include "editor/ContentView.h"
#include "editor/views/BarDrawing.h"

#include <QWidget>

#include <cstddef>
#include <optional>
#include <vector>

class QItemSelectionModel;

namespace shotweaver {

/// The cuts on show at a glance: a lane for each camera on the project's axis, and over them a tick
/// for each cut point and followed marker. It shares the cut
/// list's selection: a click selects a cut, and so do Left, Right, Home and End. With Shift they
/// select all from the one before to it, as dragging does, and a click with Ctrl adds a cut to the
/// selection or takes it out.
class EditOverview : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit EditOverview(ContentView& editor, QWidget* parent = nullptr);

    /// Rows are those of the cut list. The selection must outlive the view.
    void setSelectionModel(QItemSelectionModel* selection);
    void refresh();

    /// The cut drawn at a position, as its row in the cut list.
    std::optional<std::size_t> rowAt(QPointF position) const;
    /// Where a row's cut is drawn; null when no lane shows it.
    QRectF rowRect(std::size_t row) const;
    /// The current row in words; empty without one.
    QString selectionText() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    double pitch() const;       // from lane to lane, pixels
    double ticksHeight() const; // nothing without ticks
    BarAxis ticksAxis() const;
    void refreshTicks();
    const CameraNote* noteAtPlace(QPointF position) const;
    int labelWidth() const;
    QRectF laneRect(std::size_t lane) const;
    BarAxis axisOf(std::size_t lane) const;
    int currentRow() const; // -1 without one
    std::optional<std::size_t> rowAtX(double x) const;
    void select(int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void selectTo(int row);
    void selectionDidChange();
    void drawBand(QPainter& painter, int first, int last) const;
    void drawLabels(QPainter& painter) const;
    void drawTicks(QPainter& painter) const;
    void drawLanes(QPainter& painter) const;
    void drawCuts(QPainter& painter, int first, int last) const;
    void drawPadlocks(QPainter& painter) const;

    ContentView& editor_;
    QItemSelectionModel* selection_ = nullptr;
    std::vector<CutLane> lanes_;
    std::vector<std::int64_t> points_; // of the edit on show
    std::vector<CameraNote> notes_;
    double widestLabel_ = 0;  // pixels
    std::int64_t length_ = 1; // of the project, frames
    KeptShots kept_;
    int anchor_ = -1; // row from which Shift and dragging select
};

} // namespace shotweaver
