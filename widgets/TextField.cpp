#include "widgets/TextField.h"

#include "widgets/Style.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QStyle>

#include <limits>

namespace shotweaver {

TextField::TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent)
    : QLineEdit(parent) {
    setAccessibleName(accessibleName);
    setPlaceholderText(placeholder);
    // A saved text is never cut by being shown.
    setMaxLength(std::numeric_limits<int>::max());
    // What is dragged here is a project: texts that come with it are not for the field.
    setAcceptDrops(false);
    // Not only what is typed: screen readers put text in on their own.
    connect(this, &QLineEdit::textChanged, this,
            [this](const QString& text) { Q_EMIT typed(text.toStdString()); });
}

void TextField::show(const std::string& text) {
    const QSignalBlocker blocker(this);
    if (this->text().toStdString() != text) setText(toQt(text));
}

void TextField::showFault(const std::string& fault) {
    const bool isFaulty = !fault.empty();
    if (property("faulty").toBool() != isFaulty) {
        setProperty("faulty", isFaulty);
        style()->unpolish(this); // the style sheet looks at properties only once
        style()->polish(this);
    }
    setToolTip(toQt(fault));
}

bool TextField::event(QEvent* event) {
    if (leavesUndo_ && event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.matches(QKeySequence::Undo) || key.matches(QKeySequence::Redo)) {
            event->ignore();
            return true;
        }
    }
    return QLineEdit::event(event);
}

} // namespace shotweaver
