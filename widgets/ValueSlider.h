#pragma once

#include "widgets/ControlRange.h"

#include <QSlider>

namespace shotweaver {

/// A slider over a range of steps. A value between two steps stays as it is until it is moved.
class ValueSlider : public QSlider {
    Q_OBJECT

  public:
    ValueSlider(const ControlRange& range, const QString& accessibleName,
                QWidget* parent = nullptr);

    void show(double value);

    double number() const { return number_; }
    const ControlRange& controlRange() const { return range_; }
    /// What dragging does: moves to the step next to `value`.
    void moveTo(double value);

  Q_SIGNALS:
    void moved(double value);

  protected:
    void wheelEvent(QWheelEvent* event) override;

  private:
    int positionOf(double value) const;

    ControlRange range_;
    double number_;
};

} // namespace shotweaver
