#include "widgets/ButtonAction.h"

#include <QPushButton>
#include <QShortcut>

namespace shotweaver {

QPushButton* makeActionButton(const ButtonAction& action, QWidget* panel,
                              std::function<void()> run) {
    auto* const button = new QPushButton(action.text, panel);
    button->setObjectName(action.name);
    button->setAccessibleName(action.text);
    QObject::connect(button, &QPushButton::clicked, panel, std::move(run));
    if (action.shortcut.isEmpty()) {
        button->setToolTip(action.help);
        return button;
    }
    button->setToolTip(QStringLiteral("%1 (%2)").arg(
        action.help, action.shortcut.toString(QKeySequence::NativeText)));
    QObject::connect(new QShortcut(action.shortcut, panel), &QShortcut::activated, button,
                     [button] { button->click(); });
    return button;
}

} // namespace shotweaver
