#include "editor/views/settings/SectionsPanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/SectionRowView.h"
#include "widgets/ButtonAction.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace shotweaver {

SectionsPanel::SectionsPanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Fixed camera sections"), parent), editor_(editor),
      addSection_(
          makeActionButton({QStringLiteral("addSection"), QStringLiteral("Add section"), {}, {}},
                           this, [this] { editor_.addSection(); })),
      rowLayout_(columnLayout()) {
    rowLayout_->setSpacing(style::scaled(style::normal));

    QVBoxLayout* const layout = panelLayout(this);
    layout->addWidget(helpLabel(panelTexts::sectionsHelp));
    layout->addWidget(addSection_, 0, Qt::AlignLeft);
    layout->addLayout(rowLayout_);
    refresh();
}

void SectionsPanel::refresh() {
    if (!editor_.project()) return;
    const std::vector<SectionDraft>& sections = editor_.fields().settings.sections;
    while (rows_.size() > sections.size())
        removeLastRow();
    if (rows_.size() < sections.size()) appendRows(sections.size() - rows_.size());
    const std::vector<PickerOption> cameras = cameraOptions(*editor_.project());
    for (std::size_t row = 0; row < sections.size(); ++row)
        rows_[row]->show(sections[row], cameras);
}

void SectionsPanel::appendRows(std::size_t count) {
    QWidget* const previous = rows_.empty() ? addSection_ : rows_.back()->lastControl();
    const std::size_t kept = rows_.size();
    const LayoutPause pause(this);
    for (; count > 0; --count) {
        rows_.push_back(new SectionRowView(editor_, rows_.size(), this));
        rowLayout_->addWidget(rows_.back());
        rows_.back()->setVisible(true);
    }
    for (std::size_t row = rows_.size(); row > kept; --row)
        rows_[row - 1]->followInTabOrder(previous);
}

void SectionsPanel::removeLastRow() {
    SectionRowView* const removed = rows_.back();
    rows_.pop_back();
    // The focus stays near: on the row before, where the next click would be.
    if (removed->isAncestorOf(QApplication::focusWidget()))
        (rows_.empty() ? addSection_ : rows_.back()->removeButton())->setFocus();
    removed->hide();
    // Its button may be in the middle of a signal.
    removed->deleteLater();
}

} // namespace shotweaver
