#include "widgets/Stepper.h"

#include "widgets/AccessibleNumber.h"
#include "widgets/FocusOutline.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QToolButton>

#include <algorithm>
#include <cmath>

namespace shotweaver {

Stepper::Stepper(const ControlRange& range, const QString& owner, QWidget* parent)
    : QWidget(parent), range_(range), label_(style::label(style::TextStyle::body)),
      down_(addButton(QStringLiteral("−"), -1)), up_(addButton(QStringLiteral("+"), 1)) {
    installAccessible<Stepper, AccessibleNumber<Stepper, QAccessible::SpinBox>>();
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleDescription(owner);
    label_->setFont(style::withEqualDigits(label_->font()));
    // The palette's own colours, so that a disabled stepper looks it.
    label_->setPalette(QPalette());
    auto* const row = new QHBoxLayout(this);
    const int margin = focusMargin();
    row->setContentsMargins(margin, margin, margin, margin);
    row->setSpacing(style::scaled(style::tight));
    row->addWidget(label_);
    row->addStretch();
    row->addWidget(down_);
    row->addWidget(up_);
}

QToolButton* Stepper::addButton(const QString& text, int steps) {
    auto* const button = new QToolButton(this);
    button->setText(text);
    button->setFocusPolicy(Qt::NoFocus);
    button->setAutoRepeat(true);
    connect(button, &QToolButton::clicked, this, [this, steps] { stepBy(steps); });
    return button;
}

void Stepper::show(double value, const std::string& label) {
    number_ = value;
    showText(*label_, label);
    setAccessibleName(label_->text());
    updateButtons();
}

void Stepper::updateButtons() {
    down_->setEnabled(number_ > range_.minimum);
    up_->setEnabled(number_ < range_.maximum);
}

void Stepper::stepBy(int steps) {
    const double value = std::clamp(number_ + steps * range_.step, range_.minimum, range_.maximum);
    if (value != number_) Q_EMIT stepped(value);
}

void Stepper::moveTo(double value) {
    stepBy(static_cast<int>(std::lround((value - number_) / range_.step)));
}

QString Stepper::labelText() const {
    return label_->text();
}

void Stepper::keyPressEvent(QKeyEvent* event) {
    constexpr int pageSteps = 5;
    switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Right:
        return stepBy(1);
    case Qt::Key_Down:
    case Qt::Key_Left:
        return stepBy(-1);
    case Qt::Key_PageUp:
        return stepBy(pageSteps);
    case Qt::Key_PageDown:
        return stepBy(-pageSteps);
    default:
        QWidget::keyPressEvent(event);
    }
}

void Stepper::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    QPainter painter(this);
    drawFocus(painter, *this);
}

} // namespace shotweaver
