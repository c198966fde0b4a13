#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

#include <cstddef>
#include <functional>
#include <vector>

class QMenu;
class QPushButton;
class QScrollArea;
class QToolButton;
class QVBoxLayout;

namespace shotweaver {

class SectionRowView;

/// "Fixed camera sections": a row for each section, in their order. Object names: addSection,
/// addChapterSection.
class SectionsPanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit SectionsPanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    void add(const std::function<void()>& addSection);
    void keepInView(SectionRowView* row, QScrollArea* area);
    void fillChapters(QMenu& menu);
    void appendRows(std::size_t count);
    void removeLastRow();

    ContentView& editor_;
    QPushButton* addSection_;
    QToolButton* chapters_;
    QVBoxLayout* rowLayout_;
    std::vector<SectionRowView*> rows_;
};

} // namespace shotweaver
