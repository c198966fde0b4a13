#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace shotweaver {

class Toggle;

/// Where shots may rather end, and which markers are followed: two toggles and a file of times.
class CutPointsView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit CutPointsView(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    ContentView& editor_;
    Toggle* cutAtMarkers_;
    Toggle* followMarkers_;
    QLabel* help_;
    QPushButton* chooseTimes_;
    QLabel* times_;
    QPushButton* removeTimes_;
};

} // namespace shotweaver
