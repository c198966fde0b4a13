#pragma once

#include "editor/ContentView.h"

#include <QTableView>

namespace shotweaver {

class CutTableModel;

/// The cut list. Selected rows can be copied as tab-separated text.
class CutTable : public QTableView {
    Q_OBJECT

  public:
    /// `editor` must outlive the table.
    explicit CutTable(ContentView& editor, QWidget* parent = nullptr);

    void refresh();
    /// Puts the selected rows on the clipboard, a line each; nothing without any.
    void copySelection() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void setUpColumns();
    void addCopyAction();

    CutTableModel* model_;
    // Widths of the durations, pixels: with room enough, and as fitted last.
    int wantedDuration_ = 0;
    int fittedDuration_ = 0;
};

} // namespace shotweaver
