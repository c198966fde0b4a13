#include "widgets/ValueSlider.h"

#include "widgets/AccessibleNumber.h"

#include <QSignalBlocker>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace shotweaver {

ValueSlider::ValueSlider(const ControlRange& range, const QString& accessibleName, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), range_(range), number_(range.minimum) {
    installAccessible<ValueSlider, AccessibleNumber<ValueSlider, QAccessible::Slider>>();
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::StrongFocus); // which the wheel does not give
    setRange(0, positionOf(range.maximum));
    setPageStep(std::max(1, maximum() / 4));
    connect(this, &QSlider::valueChanged, this, [this](int position) {
        number_ = range_.minimum + position * range_.step;
        Q_EMIT moved(number_);
    });
}

int ValueSlider::positionOf(double value) const {
    return static_cast<int>(std::lround((value - range_.minimum) / range_.step));
}

void ValueSlider::show(double value) {
    const QSignalBlocker blocker(this);
    number_ = value;
    setValue(positionOf(value));
}

void ValueSlider::moveTo(double value) {
    setValue(positionOf(value));
}

void ValueSlider::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace shotweaver
