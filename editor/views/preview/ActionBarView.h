#pragma once

#include "editor/ContentView.h"

#include <QWidget>

#include <functional>

class QKeySequence;
class QLabel;
class QPushButton;
class QToolButton;

namespace shotweaver {

class EditListView;

/// The buttons that make, walk through and export edits.
class ActionBarView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit ActionBarView(ContentView& editor, QWidget* parent = nullptr);

    void refresh();
    /// The button for the selected cuts can be used while there are some.
    void showSelection(bool hasSelection);

  Q_SIGNALS:
    void selectionShuffled();

  private:
    QPushButton* addButton(const char* name, const QString& text, const char* help,
                           const QKeySequence& shortcut, void (ContentView::*operation)());
    void layOut();

    ContentView& editor_;
    ActionBar shown_;
    // In the order in which they stand.
    QPushButton* generate_;
    QPushButton* back_;
    QPushButton* forward_;
    QToolButton* position_;
    EditListView* edits_;
    QPushButton* export_;
    QPushButton* shuffleSelection_;
    QLabel* kept_;
    QPushButton* letGo_;
    QLabel* hint_;
};

} // namespace shotweaver
