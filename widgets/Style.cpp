#include "widgets/Style.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLabel>
#include <QPalette>
#include <QScreen>
#include <QStyleFactory>

#include <algorithm>

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
    QString sheet = QStringLiteral(R"(
        QGroupBox { background: @box; border: 1px solid @line; border-radius: @6;
                    margin-top: @22; padding: @12; }
        QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left;
                           left: @2; top: @2; color: @text; }
        QPushButton { background: @field; border: 1px solid @line; border-radius: @5;
                      padding: @4 @12; }
        QPushButton:hover:enabled { border-color: @secondary; }
        QPushButton:pressed { background: @line; }
        QPushButton:focus, QComboBox:focus, QLineEdit:focus { border-color: @accent; }
        QPushButton:disabled, QComboBox:disabled { color: @disabled; }
        QPushButton[prominent="true"]:enabled { background: @accent; color: @onAccent;
                                                border-color: @accent; }
        QPushButton[prominent="true"]:focus { border-color: @text; }
        QComboBox { background: @field; border: 1px solid @line; border-radius: @5;
                    padding: @4 @8; }
        QComboBox::drop-down { border: none; width: @22; }
        QComboBox QAbstractItemView { background: @field; border: 1px solid @line; }
        QLineEdit { background: @field; border: 1px solid @line; border-radius: @5;
                    padding: @4 @6; }
        QToolButton { background: @field; border: 1px solid @line; border-radius: @4;
                      min-width: @14; min-height: @14; padding: @2 @4; }
        QToolButton:hover:enabled { border-color: @secondary; }
        QToolButton:pressed { background: @line; }
        QToolButton:disabled { color: @disabled; }
        QToolButton:focus { border-color: @accent; }
        QSlider::groove:horizontal { height: @4; border-radius: @2; background: @line; }
        QSlider::sub-page:horizontal { border-radius: @2; background: @accent; }
        QSlider::handle:horizontal { width: @14; margin: -@5 0; border-radius: @7;
                                     background: @text; }
        QSlider::handle:horizontal:focus { background: @accent; }
        QSlider::sub-page:horizontal:disabled, QSlider::handle:horizontal:disabled {
            background: @disabled; }
        QAbstractItemView { background: @box; border: 1px solid @line;
                            selection-background-color: @selection; }
        QHeaderView::section { background: @field; border: none; border-right: 1px solid @line;
                               padding: @4 @8; }
        QToolTip { background: @field; color: @text; border: 1px solid @line; padding: @4; }
        QScrollBar { background: transparent; border: none; }
        QScrollBar:vertical { width: @10; }
        QScrollBar:horizontal { height: @10; }
        QScrollBar::handle { background: @line; border-radius: @4; margin: @1; }
        QScrollBar::handle:vertical { min-height: @24; }
        QScrollBar::handle:horizontal { min-width: @24; }
        QScrollBar::handle:hover { background: @secondary; }
        QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
        QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
        QScrollArea { border: none; }
    )");
    sheet.replace(QStringLiteral("@box"), css(box()));
    sheet.replace(QStringLiteral("@field"), css(field()));
    sheet.replace(QStringLiteral("@line"), css(line()));
    sheet.replace(QStringLiteral("@secondary"), css(secondary()));
    sheet.replace(QStringLiteral("@text"), css(text()));
    sheet.replace(QStringLiteral("@accent"), css(accent()));
    sheet.replace(QStringLiteral("@onAccent"), css(onAccent()));
    sheet.replace(QStringLiteral("@disabled"), css(disabled()));
    sheet.replace(QStringLiteral("@selection"), css(selection()));
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
QColor barBackground() {
    QColor colour = secondary();
    colour.setAlphaF(0.12F);
    return colour;
}

int scaled(double points) {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    const double dotsPerInch = screen ? screen->logicalDotsPerInchY() : standardDotsPerInch;
    const double textSize = QApplication::font().pointSizeF() / standardPoints;
    return static_cast<int>(points * textSize * dotsPerInch / standardDotsPerInch + 0.5);
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
}

} // namespace shotweaver::style
