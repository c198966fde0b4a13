#include "widgets/FocusOutline.h"

#include "widgets/Style.h"

#include <QPainter>
#include <QWidget>

namespace shotweaver {

int focusMargin() {
    return style::scaled(2);
}

void drawFocus(QPainter& painter, const QWidget& widget, const QRect& part) {
    if (!widget.hasFocus()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(style::accent());
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(part).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

} // namespace shotweaver
