#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace shotweaver {

class BalancePanel;
class BookendsPanel;
class CamerasPanel;
class CoveragePanel;
class PresetsPanel;
class SectionsPanel;

/// The settings of the edit: the project's line and the six groups, below one another. Whoever
/// shows it scrolls it. The controls' object names stay as they are: tests and scripts rely on
/// them. Its own are projectLine, undo and redo.
class SettingsColumn : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the column.
    explicit SettingsColumn(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

    QSize sizeHint() const override;
    /// As narrow as it may become, whatever names it shows.
    QSize minimumSizeHint() const override;

  private:
    ContentView& editor_;
    QLabel* projectLine_;
    QPushButton* undo_;
    QPushButton* redo_;
    PresetsPanel* presets_;
    CoveragePanel* coverage_;
    CamerasPanel* cameras_;
    BalancePanel* balance_;
    BookendsPanel* bookends_;
    SectionsPanel* sections_;
};

} // namespace shotweaver
