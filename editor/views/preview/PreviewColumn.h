#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QLabel;

namespace shotweaver {

class ActionBarView;
class CutActions;
class CutTable;
class EditOverview;
class UsageTable;

/// The edit on show: the coverage warning, the action bar, the cuts and how much each camera is
/// used in them.
class PreviewColumn : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit PreviewColumn(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    void layOut();
    void selectionDidChange();

    ContentView& editor_;
    QLabel* warning_;
    ActionBarView* actions_;
    QLabel* summary_;
    EditOverview* overview_;
    CutTable* cuts_;
    QLabel* reason_; // why the current cut is there
    QLabel* noCuts_;
    UsageTable* usage_;
    CutActions* cutActions_;
};

} // namespace shotweaver
