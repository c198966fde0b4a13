#include "editor/views/DropHighlight.h"

#include "widgets/Style.h"

#include <QPainter>

namespace shotweaver {

DropHighlight::DropHighlight(QWidget* parent) : QWidget(parent) {
    setObjectName(QStringLiteral("dropHighlight"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void DropHighlight::paintEvent(QPaintEvent*) {
    constexpr double radius = 12;
    constexpr double width = 3;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(style::accent(), style::scaled(width), Qt::DashLine));
    const double inset = style::scaled(width);
    painter.drawRoundedRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset),
                            style::scaled(radius), style::scaled(radius));
}

} // namespace shotweaver
