#pragma once

#include "editor/ContentView.h"

#include <QFrame>

class QTableWidget;

namespace shotweaver {

/// The list of edits, which opens under the button that says which one is on show. A click or
/// Return shows the edit of a row. Object name of the table: editList.
class EditListView : public QFrame {
    Q_OBJECT

  public:
    /// `editor` must outlive the list.
    explicit EditListView(ContentView& editor, QWidget* parent);

    /// Opens it below a widget, with the current edit marked.
    void openUnder(const QWidget& button);

  private:
    void fill();
    void choose(int row);

    ContentView& editor_;
    QTableWidget* table_;
};

} // namespace shotweaver
