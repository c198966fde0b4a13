#include "widgets/WrappedText.h"

#include <QFontMetricsF>
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

WrappedText::WrappedText(const QString& text, const QFont& font, double width)
    : layout_(shortened(text).replace(QLatin1Char('\n'), QChar(QChar::LineSeparator)), font) {
    QTextOption option;
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

int lineWidth(const QString& text, const QFont& font) {
    return static_cast<int>(std::ceil(QFontMetricsF(font).horizontalAdvance(shortened(text)))) + 1;
}

WrappedLabel::WrappedLabel(style::TextStyle style, const QColor& colour) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setFont(style::font(style));
    QPalette palette = this->palette();
    palette.setColor(QPalette::WindowText, colour);
    setPalette(palette);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize WrappedLabel::sizeHint() const {
    const int width = std::min(shotweaver::lineWidth(text(), font()), style::scaled(400));
    return {width, heightForWidth(width)};
}

QSize WrappedLabel::minimumSizeHint() const {
    return {style::scaled(60), fontMetrics().height()};
}

int WrappedLabel::heightForWidth(int width) const {
    return heights_.height(text(), font(), width, [&] {
        return static_cast<int>(std::ceil(WrappedText(text(), font(), width).height()));
    });
}

void WrappedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    WrappedText(text(), font(), width()).draw(painter, {0, 0});
}

} // namespace shotweaver
