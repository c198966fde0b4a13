#pragma once

#include <QKeySequence>
#include <QString>

#include <functional>

class QPushButton;
class QWidget;

namespace shotweaver {

/// What a button does and says.
struct ButtonAction {
    QString name; // the object name
    QString text;
    QString help;          // stands in the tooltip, before the shortcut
    QKeySequence shortcut; // works wherever the focus is in the panel's window; empty for none
};

/// Says in the tooltip what a button does, and its shortcut when it has one.
void setHelp(QPushButton& button, const QString& help, const QKeySequence& shortcut);

/// Makes the button. Its shortcut belongs to `panel`: a button's own would go with a change of its
/// text.
QPushButton* makeActionButton(const ButtonAction& action, QWidget* panel,
                              std::function<void()> run);

} // namespace shotweaver
