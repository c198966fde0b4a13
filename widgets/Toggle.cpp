#include "widgets/Toggle.h"

#include "widgets/FocusOutline.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QPainter>
#include <QSignalBlocker>

#include <cmath>

namespace shotweaver {

namespace {

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

int boxSide() {
    return style::scaled(14);
}

} // namespace

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
    return boxSide() + style::scaled(6);
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
    drawCheckBox(painter, {0.0, boxTop, 1.0 * boxSide(), 1.0 * boxSide()}, *this);
    painter.setPen(palette().color(foregroundRole()));
    text.draw(painter, QPointF(indent(), top), std::max<double>(height(), text.height()));
    // Around the label: the box stands at the edge.
    drawFocus(painter, *this, rect().adjusted(indent() - focusMargin() - 2, 0, 0, 0));
}

} // namespace shotweaver
