#include "editor/views/preview/PreviewColumn.h"

#include "editor/PanelTexts.h"
#include "editor/views/preview/ActionBarView.h"
#include "editor/views/preview/CutActions.h"
#include "editor/views/preview/CutTable.h"
#include "editor/views/preview/EditOverview.h"
#include "editor/views/preview/UsageTable.h"
#include "planning/EditTexts.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QItemSelectionModel>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

void showLine(QLabel& label, const std::optional<std::string>& text) {
    showText(label, text.value_or(""));
    label.setVisible(text.has_value());
}

} // namespace

PreviewColumn::PreviewColumn(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor),
      warning_(new WrappedLabel(style::TextStyle::body, style::accent())),
      actions_(new ActionBarView(editor)), summary_(new WrappedLabel(style::TextStyle::body)),
      overview_(new EditOverview(editor)), cuts_(new CutTable(editor)),
      reason_(new WrappedLabel(style::TextStyle::caption, style::secondary())),
      noCuts_(new WrappedLabel(style::TextStyle::body, style::secondary())),
      usage_(new UsageTable(editor)),
      cutActions_(new CutActions(editor, *cuts_->selectionModel(), this)) {
    reason_->setObjectName(QStringLiteral("cutReason"));
    warning_->setObjectName(QStringLiteral("coverageWarning"));
    summary_->setObjectName(QStringLiteral("summary"));
    noCuts_->setObjectName(QStringLiteral("noCuts"));
    noCuts_->setText(QString::fromUtf8(panelTexts::noCuts));
    noCuts_->setAlignment(Qt::AlignCenter);
    overview_->setSelectionModel(cuts_->selectionModel());
    cutActions_->addTo(*cuts_);
    cutActions_->addTo(*overview_);
    const auto changed = [this] { selectionDidChange(); };
    connect(cuts_->selectionModel(), &QItemSelectionModel::selectionChanged, this, changed);
    connect(cuts_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, changed);
    connect(cuts_->model(), &QAbstractItemModel::modelReset, this, changed);
    connect(cuts_->model(), &QAbstractItemModel::dataChanged, this, changed);
    connect(actions_, &ActionBarView::selectionShuffled, cutActions_,
            &CutActions::shuffleSelection);
    layOut();
    refresh();
}

void PreviewColumn::layOut() {
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::scaled(style::normal));
    for (QWidget* const widget :
         {static_cast<QWidget*>(warning_), static_cast<QWidget*>(actions_),
          static_cast<QWidget*>(summary_), static_cast<QWidget*>(overview_)})
        column->addWidget(widget);
    column->addWidget(cuts_, 1);
    column->addWidget(reason_);
    column->addWidget(noCuts_, 1);
    column->addWidget(usage_);
}

void PreviewColumn::refresh() {
    showLine(*warning_, editor_.coverageWarning());
    actions_->refresh();
    const EditRevision* const edit = editor_.fields().shownEdit();
    const bool hasCuts = edit != nullptr;
    showLine(*summary_,
             hasCuts ? std::optional(summaryLine(edit->cuts, edit->settings, *editor_.project()))
                     : std::nullopt);
    cuts_->refresh();
    cuts_->setVisible(hasCuts);
    overview_->refresh();
    overview_->setVisible(hasCuts);
    noCuts_->setVisible(!hasCuts);
    usage_->refresh();
    usage_->setVisible(hasCuts);
    selectionDidChange();
}

/// Tells why the current cut is there.
void PreviewColumn::selectionDidChange() {
    const QItemSelectionModel& selection = *cuts_->selectionModel();
    const bool hasSelection = selection.hasSelection();
    actions_->showSelection(hasSelection);
    const int row = hasSelection ? selection.currentIndex().row() : -1;
    showLine(*reason_, row < 0 ? std::nullopt
                               : std::optional(editor_.cutReason(static_cast<std::size_t>(row))));
}

} // namespace shotweaver
