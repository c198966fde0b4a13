#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

#include <cstddef>
#include <vector>

class QPushButton;
class QVBoxLayout;

namespace shotweaver {

class SectionRowView;

/// "Fixed camera sections": a row for each section, in their order. Object name: addSection.
class SectionsPanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit SectionsPanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    void appendRows(std::size_t count);
    void removeLastRow();

    ContentView& editor_;
    QPushButton* addSection_;
    QVBoxLayout* rowLayout_;
    std::vector<SectionRowView*> rows_;
};

} // namespace shotweaver
