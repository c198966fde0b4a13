#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QPlainTextEdit;
class QToolButton;

namespace shotweaver {

/// What Final Cut would refuse or change of the project: a line that opens to the list. Hidden
/// when there is nothing to tell.
class FindingsView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit FindingsView(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    void makeList();

    ContentView& editor_;
    QToolButton* heading_;
    QPlainTextEdit* list_ = nullptr; // before it is opened
};

} // namespace shotweaver
