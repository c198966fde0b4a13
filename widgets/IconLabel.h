#pragma once

#include <QLabel>

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

} // namespace shotweaver
