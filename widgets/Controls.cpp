#include "widgets/Controls.h"

#include "widgets/Accessibility.h"
#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QAbstractItemView>
#include <QAccessibleWidget>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QToolButton>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace shotweaver {

namespace {

/// A control over numbers as a screen reader meets it.
template <class Control, QAccessible::Role kind>
class AccessibleNumber : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit AccessibleNumber(Control* control)
        : QAccessibleWidget(control, kind), control_(control) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text which) const override {
        if (which == QAccessible::Value) return QString::number(control_->number());
        return QAccessibleWidget::text(which);
    }
    // Its label and buttons are parts of it, not controls of their own.
    int childCount() const override { return 0; }

    QVariant currentValue() const override { return control_->number(); }
    void setCurrentValue(const QVariant& value) override { control_->moveTo(value.toDouble()); }
    QVariant maximumValue() const override { return control_->controlRange().maximum; }
    QVariant minimumValue() const override { return control_->controlRange().minimum; }
    QVariant minimumStepSize() const override { return control_->controlRange().step; }

  private:
    Control* control_;
};

void drawFocus(QPainter& painter, const QWidget& widget) {
    if (!widget.hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(style::accent());
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(widget.rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

/// The box of a check box, with its mark when it is on.
void drawCheckBox(QPainter& painter, const QRectF& box, const QCheckBox& toggle) {
    const QColor ink = toggle.isEnabled() ? style::secondary() : style::line();
    const double side = box.width();
    const QRectF frame = box.adjusted(0.5, 0.5, -0.5, -0.5);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(toggle.isChecked() && toggle.isEnabled() ? style::accent() : ink);
    painter.setBrush(toggle.isChecked() ? painter.pen().color() : style::field());
    painter.drawRoundedRect(frame, side / 5, side / 5);
    if (!toggle.isChecked()) return;
    painter.setPen(QPen(style::background(), side / 7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF{box.topLeft() + QPointF(0.24, 0.52) * side,
                                   box.topLeft() + QPointF(0.43, 0.71) * side,
                                   box.topLeft() + QPointF(0.77, 0.31) * side});
}

/// The room that a focus outline needs around a control.
int focusMargin() {
    return style::scaled(2);
}

int boxSide() {
    return style::scaled(14);
}

} // namespace

Picker::Picker(const QString& accessibleName, QWidget* parent) : QComboBox(parent) {
    setAccessibleName(accessibleName);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(3);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QComboBox::activated, this, [this](int index) {
        const std::string id = entries_.at(static_cast<std::size_t>(index)).id;
        Q_EMIT chosen(id);
    });
}

void Picker::showEntries(std::vector<Entry> entries, const std::string& current) {
    const QSignalBlocker blocker(this);
    if (entries != entries_) {
        entries_ = std::move(entries);
        // Filled before it is attached: the list starts a timer for each inserted row.
        auto* const items = new QStandardItemModel(this);
        for (const Entry& entry : entries_) {
            auto* const item = new QStandardItem(shortened(toQt(entry.label)));
            item->setToolTip(plainToolTip(entry.label));
            items->appendRow(item);
        }
        setModel(items); // deletes the one before
    }
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& each) { return each.id == current; });
    setCurrentIndex(found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin()));
    setToolTip(plainToolTip(currentText().toStdString()));
}

/// The list may be wider than the picker, to show names whole.
void Picker::showPopup() {
    const int whole = view()->sizeHintForColumn(0) + style::scaled(style::wide);
    view()->setMinimumWidth(std::min(whole, style::scaled(480)));
    QComboBox::showPopup();
}

void Picker::initStyleOption(QStyleOptionComboBox* option) const {
    QComboBox::initStyleOption(option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    option->currentText =
        option->fontMetrics.elidedText(option->currentText, Qt::ElideRight, room.width() - 2);
}

void Picker::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    // The style sheet leaves the arrow out.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = style::scaled(4);
    const QPointF tip(width() - 3 * half, height() / 2.0 + half / 2);
    painter.setPen(QPen(isEnabled() ? style::secondary() : style::line(), half * 0.4));
    painter.drawPolyline(QPolygonF{tip + QPointF(-half, -half), tip, tip + QPointF(half, -half)});
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

ValueSlider::ValueSlider(const ControlRange& range, const QString& accessibleName, QWidget* parent)
    : QSlider(Qt::Horizontal, parent), range_(range), number_(range.minimum) {
    installAccessible<ValueSlider, AccessibleNumber<ValueSlider, QAccessible::Slider>>();
    setAccessibleName(accessibleName);
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

Toggle::Toggle(const QString& label, QWidget* parent) : QCheckBox(parent) {
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    setLabel(label);
    // Not only what is clicked: screen readers switch it on their own.
    connect(this, &QCheckBox::toggled, this, &Toggle::switched);
}

void Toggle::show(bool isOn) {
    const QSignalBlocker blocker(this);
    setChecked(isOn);
}

void Toggle::showLabel(const std::string& label) {
    if (label != label_.toStdString()) setLabel(toQt(label));
}

void Toggle::setLabel(const QString& label) {
    label_ = label;
    // No ampersand of a name is a shortcut.
    setText(QString(label).replace(QLatin1Char('&'), QStringLiteral("&&")));
    setAccessibleName(label);
    updateGeometry();
}

int Toggle::indent() const {
    return focusMargin() + boxSide() + style::scaled(6);
}

QSize Toggle::sizeHint() const {
    const int width = indent() + lineWidth(label_, font()) + focusMargin();
    return {width, heightForWidth(width)};
}

QSize Toggle::minimumSizeHint() const {
    return {indent() + style::scaled(40) + focusMargin(), fontMetrics().height()};
}

int Toggle::heightForWidth(int width) const {
    const int text = heights_.height(label_, font(), width, [&] {
        const int room = width - indent() - focusMargin();
        return static_cast<int>(std::ceil(WrappedText(label_, font(), room).height()));
    });
    return text + 2 * focusMargin();
}

void Toggle::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const WrappedText text(label_, font(), width() - indent() - focusMargin());
    // In the middle, with the box beside the first line.
    const double top = std::floor((height() - text.height()) / 2);
    const double boxTop = top + std::floor((text.lineHeight() - boxSide()) / 2);
    drawCheckBox(painter, {1.0 * focusMargin(), boxTop, 1.0 * boxSide(), 1.0 * boxSide()}, *this);
    painter.setPen(palette().color(foregroundRole()));
    text.draw(painter, QPointF(indent(), top));
    drawFocus(painter, *this);
}

TextField::TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent)
    : QLineEdit(parent) {
    setAccessibleName(accessibleName);
    setPlaceholderText(placeholder);
    // A saved text is never cut by being shown.
    setMaxLength(std::numeric_limits<int>::max());
    // What is dragged here is a project: texts that come with it are not for the field.
    setAcceptDrops(false);
    // Not only what is typed: screen readers put text in on their own.
    connect(this, &QLineEdit::textChanged, this,
            [this](const QString& text) { Q_EMIT typed(text.toStdString()); });
}

void TextField::show(const std::string& text) {
    const QSignalBlocker blocker(this);
    if (this->text().toStdString() != text) setText(toQt(text));
}

void showText(QLabel& label, const std::string& text) {
    const QString shown = shortened(toQt(text));
    if (label.text() != shown) label.setText(shown);
}

} // namespace shotweaver
