#include "widgets/Padlock.h"

#include "widgets/Style.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>

namespace shotweaver {

void drawPadlock(QPainter& painter, const QRectF& rect, const QColor& colour) {
    const double height = rect.height();
    const double width = height * 0.7;
    const QRectF body(rect.center().x() - width / 2, rect.top() + height * 0.45, width,
                      height * 0.55);
    const double line = height * 0.12;
    const double bow = width * 0.6;
    const QRectF arch(rect.center().x() - bow / 2, rect.top() + line / 2, bow, height * 0.8);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colour, line));
    painter.setBrush(Qt::NoBrush);
    painter.drawArc(arch, 0, 180 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(body, line, line);
    painter.restore();
}

QIcon padlockIcon() {
    const int size = style::scaled(12);
    constexpr int sharper = 2; // for dense displays
    QPixmap pixmap(size * sharper, size * sharper);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    drawPadlock(painter, pixmap.rect(), style::text());
    painter.end();
    pixmap.setDevicePixelRatio(sharper);
    return QIcon(pixmap);
}

} // namespace shotweaver
