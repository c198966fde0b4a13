#include "widgets/WrappedText.h"

#include "widgets/Style.h"

#include <QFontMetricsF>
#include <QLabel>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace shotweaver {

QString shortened(const QString& text) {
    constexpr int longest = 2000;
    if (text.size() <= longest) return text;
    const bool splitsCharacter = text.at(longest - 1).isHighSurrogate();
    return text.left(splitsCharacter ? longest - 1 : longest) + QChar(0x2026);
}

WrappedText::WrappedText(const QString& text, const QFont& font, double width,
                         Qt::Alignment alignment)
    : layout_(shortened(text).replace(QLatin1Char('\n'), QChar(QChar::LineSeparator)), font) {
    QTextOption option(alignment & Qt::AlignHorizontal_Mask);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout_.setTextOption(option);
    layout_.beginLayout();
    for (QTextLine line = layout_.createLine(); line.isValid(); line = layout_.createLine()) {
        line.setLineWidth(width);
        line.setPosition({0, height_});
        height_ += line.height();
    }
    layout_.endLayout();
}

double WrappedText::lineHeight() const {
    return layout_.lineCount() > 0 ? layout_.lineAt(0).height() : 0;
}

void WrappedText::draw(QPainter& painter, const QPointF& topLeft, double room) const {
    const int lines = layout_.lineCount();
    int fitting = 1;
    while (fitting < lines && layout_.lineAt(fitting).rect().bottom() <= room + 1)
        ++fitting;
    const bool isCut = fitting < lines;
    for (int line = 0; line < std::min(lines, isCut ? fitting - 1 : fitting); ++line)
        layout_.lineAt(line).draw(&painter, topLeft);
    if (!isCut) return;
    const QTextLine last = layout_.lineAt(fitting - 1);
    const QString rest = layout_.text().mid(last.textStart(), qsizetype{2} * last.textLength());
    painter.setFont(layout_.font());
    painter.drawText(last.rect().translated(topLeft), Qt::TextSingleLine,
                     QFontMetricsF(layout_.font()).elidedText(rest, Qt::ElideRight, last.width()));
}

int lineWidth(const QString& text, const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(shortened(text)))) + 1;
}

void showText(QLabel& label, const std::string& text) {
    const QString shown = shortened(toQt(text));
    if (label.text() != shown) label.setText(shown);
}

} // namespace shotweaver
