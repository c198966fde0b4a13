#pragma once

#include "editor/ContentView.h"
#include "editor/views/preview/CutTableModel.h"

#include <QTableView>

namespace shotweaver {

/// The cut list. Selected rows can be copied as tab-separated text.
class CutTable : public QTableView {
    Q_OBJECT

  public:
    /// `editor` must outlive the table.
    explicit CutTable(ContentView& editor, QWidget* parent = nullptr);

    void refresh();
    /// A few rows: it takes what room there is.
    QSize sizeHint() const override;
    /// Puts the selected rows on the clipboard, a line each; nothing without any.
    void copySelection() const;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void setUpColumns();
    void addCopyAction();
    int titleWidth(int column, CutTableModel::Titles titles) const;
    int widthOfTitles(CutTableModel::Titles titles) const;

    CutTableModel* model_;
    int fitted_[CutTableModel::columns] = {}; // widths, pixels, that the user may change
};

} // namespace shotweaver
