#include "widgets/ElidedLabel.h"

#include "widgets/PlainToolTip.h"
#include "widgets/WrappedText.h"

#include <QPainter>

namespace shotweaver {

ElidedLabel::ElidedLabel(style::TextStyle style, const QColor& colour) {
    style::prepare(*this, style, colour);
}

void ElidedLabel::show(const std::string& text) {
    showText(*this, text);
    setToolTip(plainToolTip(text));
    setAccessibleName(toQt(text));
}

QSize ElidedLabel::minimumSizeHint() const {
    return {style::scaled(60), QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(rect(), static_cast<int>(alignment().toInt()) | Qt::TextSingleLine,
                     fontMetrics().elidedText(text(), Qt::ElideMiddle, width()));
}

} // namespace shotweaver
