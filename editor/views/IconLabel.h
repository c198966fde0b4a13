#pragma once

#include <QLabel>

class QAccessibleInterface;
class QIcon;

namespace shotweaver {

/// The application's icon "ShotweaverIcon" as a label of so many points a side at the standard text
/// size, hidden from screen readers.
class IconLabel : public QLabel {
    Q_OBJECT

  public:
    explicit IconLabel(int points);
};

/// The icon in every size there is.
QIcon applicationIcon();

/// For QAccessible::installFactory; null for other objects.
QAccessibleInterface* accessibleIcon(const QString& key, QObject* object);

} // namespace shotweaver
