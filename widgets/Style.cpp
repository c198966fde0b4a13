#include "widgets/Style.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLabel>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>
#include <QStyleHints>

#include <algorithm>
#include <cassert>

namespace shotweaver::style {

namespace {

// The standard text size, to which all measures are given.
constexpr double standardPoints = 10;
constexpr double standardDotsPerInch = 96;

QFont baseFont(QFont font) {
    const QString family = QStringLiteral("Open Sans");
    if (QFontDatabase::hasFamily(family)) font.setFamily(family);
    font.setPointSizeF(std::max(font.pointSizeF(), standardPoints));
    return font;
}

QString css(const QColor& colour) {
    return colour.name(QColor::HexRgb);
}

QColor disabled() {
    return {0x7c, 0x7c, 0x86};
}
QColor placeholder() {
    return {0x9a, 0x9a, 0xa4};
}
QColor selection() {
    return {0x5a, 0x3a, 0x22};
}
QColor onAccent() {
    return {0x1a, 0x11, 0x08};
}

QPalette palette() {
    QPalette palette;
    palette.setColor(QPalette::Window, background());
    palette.setColor(QPalette::Base, field());
    palette.setColor(QPalette::AlternateBase, box());
    palette.setColor(QPalette::Button, field());
    palette.setColor(QPalette::ToolTipBase, field());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText})
        palette.setColor(role, text());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, disabled());
    palette.setColor(QPalette::PlaceholderText, placeholder());
    palette.setColor(QPalette::Highlight, selection());
    palette.setColor(QPalette::HighlightedText, text());
    palette.setColor(QPalette::Link, accent());
    palette.setColor(QPalette::LinkVisited, accent());
    return palette;
}

/// What the palette cannot say. Lengths follow the text size.
QString styleSheet() {
    const auto px = [](double points) {
        return QString::number(scaled(points)) + QStringLiteral("px");
    };
    QFile file(QStringLiteral(":/panel.qss"));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    assert(isOpen && "the style sheet is a part of the program");
    Q_UNUSED(isOpen);
    QString sheet = QString::fromUtf8(file.readAll());
    sheet.replace(QStringLiteral("@box"), css(box()));
    sheet.replace(QStringLiteral("@field"), css(field()));
    sheet.replace(QStringLiteral("@line"), css(line()));
    sheet.replace(QStringLiteral("@secondary"), css(secondary()));
    sheet.replace(QStringLiteral("@text"), css(text()));
    sheet.replace(QStringLiteral("@accent"), css(accent()));
    sheet.replace(QStringLiteral("@onAccent"), css(onAccent()));
    sheet.replace(QStringLiteral("@disabled"), css(disabled()));
    sheet.replace(QStringLiteral("@selection"), css(selection()));
    sheet.replace(QStringLiteral("@gap"), css(gap()));
    sheet.replace(QStringLiteral("-@2"), QStringLiteral("-") + px(2));
    for (const int points : {24, 22, 14, 12, 10, 8, 7, 6, 5, 4, 2, 1})
        sheet.replace(QStringLiteral("@%1").arg(points), px(points));
    return sheet;
}

} // namespace

QColor background() {
    return {0x17, 0x17, 0x1a};
}
QColor box() {
    return {0x1f, 0x1f, 0x23};
}
QColor field() {
    return {0x2a, 0x2a, 0x30};
}
QColor line() {
    return {0x3c, 0x3c, 0x44};
}
QColor text() {
    return {0xee, 0xee, 0xf2};
}
QColor secondary() {
    return {0xb2, 0xb2, 0xbc};
}
QColor help() {
    return QColor::fromRgbF(0.75F, 0.71F, 0.65F);
}
QColor accent() {
    return QColor::fromRgbF(1.0F, 0.5F, 0.17F);
}
QColor audio() {
    return QColor::fromRgbF(1.0F, 0.95F, 0.86F);
}
QColor gap() {
    return {0xff, 0x45, 0x3a};
}
QColor unused() {
    return {0x8e, 0x8e, 0x93};
}
QColor hit() {
    return {0x7a, 0x4a, 0x1e};
}
QColor barBackground() {
    QColor colour = secondary();
    colour.setAlphaF(0.12F);
    return colour;
}

int scaled(double points) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const double dotsPerInch = screen ? screen->logicalDotsPerInchY() : standardDotsPerInch;
    const double textSize = QApplication::font().pointSizeF() / standardPoints;
    return qRound(points * textSize * dotsPerInch / standardDotsPerInch);
}

QFont font(TextStyle style) {
    QFont font = QApplication::font();
    const double size = font.pointSizeF();
    switch (style) {
    case TextStyle::largeTitle:
        font.setPointSizeF(size * 2);
        font.setWeight(QFont::Bold);
        break;
    case TextStyle::title:
        font.setPointSizeF(size * 1.6);
        font.setWeight(QFont::Bold);
        break;
    case TextStyle::headline:
        font.setPointSizeF(size * 1.05);
        font.setWeight(QFont::DemiBold);
        break;
    case TextStyle::callout:
        font.setPointSizeF(size * 0.95);
        break;
    case TextStyle::caption:
        font.setPointSizeF(size * 0.87);
        break;
    case TextStyle::body:
        break;
    }
    return font;
}

QFont withEqualDigits(const QFont& font) {
    const QFontMetricsF metrics(font);
    const double width = metrics.horizontalAdvance(QLatin1Char('0'));
    const QString others = QStringLiteral("123456789");
    if (std::all_of(others.begin(), others.end(),
                    [&](QChar digit) { return metrics.horizontalAdvance(digit) == width; }))
        return font;
    QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    fixed.setPointSizeF(font.pointSizeF());
    return fixed;
}

void prepare(QLabel& label, TextStyle style, const QColor& colour) {
    label.setTextFormat(Qt::PlainText);
    label.setFont(font(style));
    QPalette palette = label.palette();
    palette.setColor(QPalette::WindowText, colour);
    label.setPalette(palette);
}

QLabel* label(TextStyle style, const QColor& colour) {
    auto* const label = new QLabel;
    prepare(*label, style, colour);
    return label;
}

void apply(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setFont(baseFont(QApplication::font()));
    QApplication::setPalette(palette());
    application.setStyleSheet(styleSheet());
    // macOS leaves buttons and check boxes out of the way that Tab goes unless it is told not to.
    QGuiApplication::styleHints()->setTabFocusBehavior(Qt::TabFocusAllControls);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QGuiApplication::styleHints()->setColorScheme(
        Qt::ColorScheme::Dark); // of what the system draws
#endif
}

} // namespace shotweaver::style
