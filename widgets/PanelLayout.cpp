#include "widgets/PanelLayout.h"

#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"

#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace shotweaver {

QVBoxLayout* panelLayout(QGroupBox* panel) {
    QVBoxLayout* const layout = columnLayout(panel);
    layout->setSpacing(style::scaled(style::normal));
    return layout;
}

LayoutPause::LayoutPause(const QWidget* panel) : layout_(*panel->layout()) {
    layout_.setEnabled(false);
}

LayoutPause::~LayoutPause() {
    layout_.setEnabled(true);
}

QHBoxLayout* rowLayout(QWidget* parent) {
    auto* const layout = new QHBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(style::scaled(style::close));
    return layout;
}

QVBoxLayout* columnLayout(QWidget* parent) {
    auto* const layout = new QVBoxLayout(parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(style::scaled(style::tight));
    return layout;
}

namespace {

void readInOrder(const QLayout& layout) {
    for (int index = 0; index < layout.count(); ++index) {
        QLayoutItem& item = *layout.itemAt(index);
        if (const QLayout* const part = item.layout()) readInOrder(*part);
        if (QWidget* const widget = item.widget()) {
            widget->raise();
            readInLayoutOrder(*widget);
        }
    }
}

} // namespace

void readInLayoutOrder(QWidget& panel) {
    if (panel.layout()) return readInOrder(*panel.layout());
    for (QWidget* const child : panel.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        readInLayoutOrder(*child);
}

QLabel* titleLabel(const QString& title, QWidget* control) {
    QLabel* const label = style::label(style::TextStyle::body);
    // The palette's own colours know a disabled look.
    label->setPalette(QPalette());
    label->setText(title);
    label->setBuddy(control);
    return label;
}

QLabel* helpLabel(const char* text) {
    QLabel* const label = new WrappedLabel(style::TextStyle::caption, style::help());
    label->setText(QString::fromUtf8(text));
    return label;
}

QFrame* divider() {
    auto* const line = new QFrame;
    line->setFixedHeight(style::scaled(1));
    line->setAutoFillBackground(true);
    QPalette palette;
    palette.setColor(QPalette::Window, style::line());
    line->setPalette(palette);
    return line;
}

} // namespace shotweaver
