#include "widgets/ButtonAction.h"

#include <QPushButton>
#include <QShortcut>

namespace shotweaver {

void setHelp(QPushButton& button, const QString& help, const QKeySequence& shortcut) {
    button.setToolTip(shortcut.isEmpty() ? help
                                         : QStringLiteral("%1 (%2)").arg(
                                               help, shortcut.toString(QKeySequence::NativeText)));
}

QPushButton* makeActionButton(const ButtonAction& action, QWidget* panel,
                              std::function<void()> run) {
    auto* const button = new QPushButton(action.text, panel);
    button->setObjectName(action.name);
    button->setAccessibleName(action.text);
    QObject::connect(button, &QPushButton::clicked, panel, std::move(run));
    setHelp(*button, action.help, action.shortcut);
    if (action.shortcut.isEmpty()) return button;
    QObject::connect(new QShortcut(action.shortcut, panel), &QShortcut::activated, button,
                     [button] { button->click(); });
    return button;
}

} // namespace shotweaver
