#pragma once

#include "platform/UserDefaults.h"

#include <QObject>

class QSplitter;
class QWidget;

namespace shotweaver {

/// Remembers in the user's defaults how large a window was and where its divider stood, from its
/// closing to the next start. What cannot be read or stored is forgotten.
class WindowMemory : public QObject {
    Q_OBJECT

  public:
    /// Gives the window, which is not shown yet and owns this, its former size.
    WindowMemory(UserDefaults defaults, QWidget* window, QSplitter* divider);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void store();

    UserDefaults defaults_;
    QWidget* window_;
    QSplitter* divider_;
};

} // namespace shotweaver
