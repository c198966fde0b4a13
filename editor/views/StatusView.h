#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QLabel;
class QPushButton;

namespace shotweaver {

class ElidedLabel;

/// The lines under the columns: the status, where the last export lies, what an import replaced, a
/// failed save, the hint. Object names: status, exportedFile, copyPath, showInFolder, replaced,
/// bringBack, sessionSaveError.
class StatusView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit StatusView(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    QWidget* makeExport();
    QWidget* makeReplaced();

    ContentView& editor_;
    QLabel* status_;
    ElidedLabel* exportedFile_ = nullptr;
    QWidget* export_; // its row
    QLabel* replaced_ = nullptr;
    QPushButton* bringBack_ = nullptr;
    QWidget* replacedRow_;
    QLabel* saveError_;
};

} // namespace shotweaver
