#include "widgets/Swatch.h"

#include "widgets/Style.h"

#include <QPainter>
#include <QPixmap>

#include <iterator>

namespace shotweaver {

QColor distinctColour(std::size_t place) {
    constexpr QRgb colours[] = {0x56b4e9, 0xf0e442, 0x009e73, 0xcc79a7, 0x7f39c6, 0xe1b598,
                                0x91466b, 0xa5c6d4, 0xa856fb, 0x798cd8, 0xac53a3, 0x5971cf};
    return {colours[place % std::size(colours)]};
}

QIcon swatch(std::size_t place) {
    const int side = style::scaled(10);
    constexpr int sharper = 2; // for dense displays
    QPixmap pixmap(side * sharper, side * sharper);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(distinctColour(place));
    painter.drawRoundedRect(pixmap.rect(), side / 4.0, side / 4.0);
    painter.end();
    pixmap.setDevicePixelRatio(sharper);
    return QIcon(pixmap);
}

} // namespace shotweaver
