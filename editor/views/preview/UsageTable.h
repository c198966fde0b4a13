#pragma once

#include "editor/ContentView.h"
#include "planning/EditTexts.h"

#include <QWidget>

#include <vector>

class QTableWidget;

namespace shotweaver {

/// The table "Actual camera usage" under its title.
class UsageTable : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit UsageTable(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    void setUpTable();
    void showRow(int row, const UsageRow& usage);

    ContentView& editor_;
    QTableWidget* table_;
    std::vector<UsageRow> rows_;
};

} // namespace shotweaver
