#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QBoxLayout;
class QLabel;

namespace shotweaver {

class ActionBarView;
class CutActions;
class CutTable;
class Timeline;
class UsageTable;
class WarningLine;

/// The edit on show: the coverage warning, the action bar, the cuts and how much each camera is
/// used in them.
class PreviewColumn : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit PreviewColumn(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void layOut();
    void selectionDidChange();

    ContentView& editor_;
    WarningLine* warning_;
    ActionBarView* actions_;
    QLabel* summary_;
    Timeline* timeline_;
    CutTable* cuts_;
    QLabel* reason_; // why the current cut is there
    QLabel* noCuts_;
    UsageTable* usage_;
    QWidget* list_ = nullptr; // of the cuts, and why the current one is there
    QBoxLayout* lists_ = nullptr;
    CutActions* cutActions_;
};

} // namespace shotweaver
