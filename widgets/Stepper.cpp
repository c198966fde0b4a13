#include "widgets/Stepper.h"

#include "widgets/AccessibleNumber.h"
#include "widgets/FocusOutline.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QRegularExpressionValidator>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <utility>

namespace shotweaver {

Stepper::Stepper(const ControlRange& range, const QString& owner, QWidget* parent)
    : QWidget(parent), range_(range), label_(new WrappedLabel(style::TextStyle::body)),
      down_(addButton(QStringLiteral("−"), -1)), up_(addButton(QStringLiteral("+"), 1)) {
    installAccessible<Stepper, AccessibleNumber<Stepper, QAccessible::SpinBox>>();
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleDescription(owner);
    label_->setFont(style::withEqualDigits(label_->font()));
    // The palette's own colours, so that a disabled stepper looks it.
    label_->setPalette(QPalette());
    label_->setCursor(Qt::IBeamCursor);
    label_->setToolTip(QStringLiteral("Click to type a value"));
    label_->installEventFilter(this);
    auto* const row = new QHBoxLayout(this);
    const int margin = focusMargin();
    row->setContentsMargins(0, margin, margin, margin);
    row->setSpacing(style::scaled(style::tight));
    row->addWidget(label_, 1);
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

void Stepper::set(double value) {
    value = std::clamp(value, range_.minimum, range_.maximum);
    if (value != number_) Q_EMIT stepped(value);
}

void Stepper::stepBy(int steps) {
    set(number_ + steps * range_.step);
}

/// Over the label, as wide as any value needs.
void Stepper::beginTyping(const QString& text) {
    if (field_) return;
    field_ = new QLineEdit(this);
    field_->setObjectName(QStringLiteral("typedValue"));
    field_->setAccessibleName(label_->text());
    field_->setValidator(
        new QRegularExpressionValidator(QRegularExpression(QStringLiteral("[0-9]{0,6}")), field_));
    field_->setText(text);
    const int width = std::min(label_->width(), style::scaled(64));
    field_->setGeometry(down_->x() - style::scaled(style::tight) - width, 0, width, height());
    field_->installEventFilter(this);
    field_->show();
    field_->setFocus();
}

/// The field goes first: what follows may take the focus from it.
void Stepper::endTyping(Typed typed) {
    if (!field_) return;
    QLineEdit* const field = std::exchange(field_, nullptr);
    const QString text = field->text();
    const bool hadFocus = field->hasFocus();
    field->hide();
    field->deleteLater();
    if (hadFocus) setFocus();
    if (typed == Typed::taken && !text.isEmpty()) set(text.toDouble());
}

bool Stepper::eventFilter(QObject* watched, QEvent* event) {
    if (watched == label_) {
        if (event->type() != QEvent::MouseButtonRelease || !isEnabled()) return false;
        setFocus();
        beginTyping(QString::number(std::trunc(number_)));
        field_->selectAll();
        return true;
    }
    if (event->type() == QEvent::FocusOut) endTyping(Typed::taken);
    if (event->type() != QEvent::KeyPress) return false;
    switch (static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        endTyping(Typed::taken);
        return true;
    case Qt::Key_Escape:
        endTyping(Typed::dropped);
        return true;
    default:
        return false;
    }
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
    case Qt::Key_Home:
        return set(range_.minimum);
    case Qt::Key_End:
        return set(range_.maximum);
    case Qt::Key_Return:
    case Qt::Key_Enter:
        beginTyping(QString::number(std::trunc(number_)));
        return field_->selectAll();
    default:
        break;
    }
    const QString typed = event->text();
    if (typed.size() == 1 && typed.front().isDigit() && typed.front().unicode() < 128)
        return beginTyping(typed);
    QWidget::keyPressEvent(event);
}

void Stepper::paintEvent(QPaintEvent* event) {
    QWidget::paintEvent(event);
    QPainter painter(this);
    const int margin = focusMargin();
    drawFocus(
        painter, *this,
        down_->geometry().united(up_->geometry()).marginsAdded({margin, margin, margin, margin}));
}

} // namespace shotweaver
