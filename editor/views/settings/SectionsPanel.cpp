#include "editor/views/settings/SectionsPanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/SectionRowView.h"
#include "widgets/ButtonAction.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace shotweaver {

SectionsPanel::SectionsPanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Fixed camera sections"), parent), editor_(editor),
      addSection_(
          makeActionButton({QStringLiteral("addSection"), QStringLiteral("Add section"), {}, {}},
                           this, [this] { add([this] { editor_.addSection(); }); })),
      chapters_(new QToolButton), rowLayout_(columnLayout()) {
    rowLayout_->setSpacing(style::scaled(style::normal));
    chapters_->setObjectName(QStringLiteral("addChapterSection"));
    chapters_->setText(QStringLiteral("From a chapter"));
    chapters_->setAccessibleName(chapters_->text());
    chapters_->setToolTip(QString::fromUtf8(panelTexts::chaptersTip));
    chapters_->setFocusPolicy(Qt::StrongFocus);
    chapters_->setPopupMode(QToolButton::InstantPopup);
    auto* const menu = new QMenu(chapters_);
    menu->setToolTipsVisible(true);
    connect(menu, &QMenu::aboutToShow, this, [this, menu] { fillChapters(*menu); });
    chapters_->setMenu(menu);

    QHBoxLayout* const adding = rowLayout();
    adding->addWidget(addSection_);
    adding->addWidget(chapters_);
    adding->addStretch();
    QVBoxLayout* const layout = panelLayout(this);
    layout->addWidget(helpLabel(panelTexts::sectionsHelp));
    layout->addLayout(adding);
    layout->addLayout(rowLayout_);
    refresh();
}

/// Shows what was added: the row comes into view, ready for its start to be typed.
void SectionsPanel::add(const std::function<void()>& addSection) {
    const std::size_t before = rows_.size();
    addSection();
    if (rows_.size() <= before) return;
    SectionRowView* const row = rows_.back();
    row->beginWithStart();
    for (QWidget* parent = parentWidget(); parent; parent = parent->parentWidget())
        if (auto* const area = qobject_cast<QScrollArea*>(parent)) keepInView(row, area);
}

/// Rows are laid out in several turns, with each of which the scrolled column grows.
void SectionsPanel::keepInView(SectionRowView* row, QScrollArea* area) {
    const auto show = [row, area] {
        if (row->isAncestorOf(QApplication::focusWidget()))
            area->ensureWidgetVisible(row, 0, style::scaled(style::wide));
    };
    connect(area->verticalScrollBar(), &QScrollBar::rangeChanged, row, show);
    QTimer::singleShot(0, row, show);
}

/// Each chapter, from its marker to the next.
void SectionsPanel::fillChapters(QMenu& menu) {
    constexpr std::size_t most = 500; // more than anyone looks through
    menu.clear();
    const Project& project = *editor_.project();
    const std::size_t chapters = project.markers.chapters.size();
    for (std::size_t chapter = 0; chapter < std::min(chapters, most); ++chapter) {
        QString text = toQt(chapterText(chapter, project));
        text.replace(QLatin1Char('&'), QLatin1String("&&")); // which are no mnemonics
        menu.addAction(text, this, [this, chapter] {
            add([this, chapter] { editor_.addChapterSection(chapter); });
        });
    }
    if (chapters > most)
        menu.addAction(QStringLiteral("There are %1 more.").arg(chapters - most))
            ->setEnabled(false);
}

void SectionsPanel::refresh() {
    if (!editor_.project()) return;
    const std::vector<SectionDraft>& sections = editor_.fields().settings.sections;
    while (rows_.size() > sections.size())
        removeLastRow();
    if (rows_.size() < sections.size()) appendRows(sections.size() - rows_.size());
    const Project& project = *editor_.project();
    chapters_->setVisible(!project.markers.chapters.empty());
    const std::vector<PickerOption> cameras = cameraOptions(project);
    for (std::size_t row = 0; row < sections.size(); ++row)
        rows_[row]->show(sections[row], cameras, sectionFaults(sections[row], project));
}

void SectionsPanel::appendRows(std::size_t count) {
    QWidget* const previous =
        rows_.empty() ? static_cast<QWidget*>(chapters_) : rows_.back()->lastControl();
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
