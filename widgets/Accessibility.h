#pragma once

#include <QAccessible>
#include <QObject>
#include <QString>

namespace shotweaver {

/// Lets screen readers meet every `Widget` through an `Interface`, which is made from a pointer to
/// it. The widget's constructor calls this; only the first call does anything.
template <class Widget, class Interface>
void installAccessible() {
    QAccessible::installFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* const widget = qobject_cast<Widget*>(object);
        return widget ? new Interface(widget) : nullptr;
    });
}

} // namespace shotweaver
