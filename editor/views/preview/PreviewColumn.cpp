#include "editor/views/preview/PreviewColumn.h"

#include "editor/views/preview/ActionBarView.h"
#include "editor/views/preview/CutActions.h"
#include "editor/views/preview/CutTable.h"
#include "editor/views/preview/Timeline.h"
#include "editor/views/preview/UsageTable.h"
#include "planning/EditTexts.h"
#include "widgets/PanelLayout.h"
#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"
#include "widgets/WarningLine.h"
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
      warning_(new WarningLine(QStringLiteral("coverageWarning"))),
      actions_(new ActionBarView(editor)), summary_(new WrappedLabel(style::TextStyle::body)),
      timeline_(new Timeline(editor)), cuts_(new CutTable(editor)),
      reason_(new WrappedLabel(style::TextStyle::caption, style::secondary())),
      noCuts_(new WrappedLabel(style::TextStyle::body, style::secondary())),
      usage_(new UsageTable(editor)),
      cutActions_(new CutActions(editor, *cuts_->selectionModel(), this)) {
    reason_->setObjectName(QStringLiteral("cutReason"));
    summary_->setObjectName(QStringLiteral("summary"));
    noCuts_->setObjectName(QStringLiteral("noCuts"));
    noCuts_->setAlignment(Qt::AlignCenter);
    timeline_->setSelectionModel(cuts_->selectionModel());
    cutActions_->addTo(*cuts_);
    cutActions_->addTo(*timeline_);
    const auto changed = [this] { selectionDidChange(); };
    connect(cuts_->selectionModel(), &QItemSelectionModel::selectionChanged, this, changed);
    connect(cuts_->selectionModel(), &QItemSelectionModel::currentRowChanged, this, changed);
    connect(cuts_->model(), &QAbstractItemModel::modelReset, this, changed);
    connect(cuts_->model(), &QAbstractItemModel::dataChanged, this, changed);
    connect(timeline_, &Timeline::rowChosen, this, [this](int row) {
        cuts_->scrollTo(cuts_->model()->index(row, 0), QAbstractItemView::PositionAtCenter);
    });
    connect(actions_, &ActionBarView::selectionShuffled, cutActions_,
            &CutActions::shuffleSelection);
    layOut();
    refresh();
}

void PreviewColumn::layOut() {
    setMinimumWidth(style::scaled(388)); // all columns, with ordinary names
    // As wide as it reads well.
    cuts_->setMaximumWidth(style::scaled(760));
    // The same for any reason and for none, so that the list does not move.
    reason_->setFixedHeight(3 * reason_->fontMetrics().lineSpacing());
    reason_->setAlignment(Qt::AlignTop);
    auto* const list = new QWidget(this);
    QVBoxLayout* const listColumn = columnLayout(list);
    listColumn->addWidget(cuts_, 1);
    listColumn->addWidget(reason_);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::scaled(style::normal));
    column->addWidget(warning_);
    column->addWidget(actions_);
    column->addWidget(summary_);
    column->addWidget(timeline_, 1);
    lists_ = new QBoxLayout(QBoxLayout::TopToBottom);
    lists_->setSpacing(style::scaled(style::normal));
    lists_->addWidget(list, 1);
    lists_->addWidget(usage_);
    lists_->addStretch();
    column->addLayout(lists_, 2);
    column->addWidget(noCuts_, 1);
    list_ = list;
}

/// Where there is room for both, the usage stands beside the list.
void PreviewColumn::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const bool isWide = width() >= style::scaled(860);
    lists_->setDirection(isWide ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    lists_->setAlignment(usage_, isWide ? Qt::AlignTop : Qt::Alignment());
    list_->setMaximumWidth(isWide ? cuts_->maximumWidth() : QWIDGETSIZE_MAX);
    usage_->setMinimumWidth(isWide ? style::scaled(380) : 0);
    usage_->setMaximumWidth(style::scaled(isWide ? 480 : 760));
}

void PreviewColumn::refresh() {
    warning_->show(editor_.coverageWarning().value_or(""));
    actions_->refresh();
    const EditRevision* const edit = editor_.fields().shownEdit();
    const bool hasCuts = edit != nullptr;
    showLine(*summary_,
             hasCuts ? std::optional(summaryLine(edit->cuts, edit->settings, *editor_.project()))
                     : std::nullopt);
    cuts_->refresh();
    list_->setVisible(hasCuts);
    timeline_->refresh();
    timeline_->setVisible(hasCuts);
    showText(*noCuts_, editor_.noCutsText());
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
    const std::string reason = row < 0 ? "" : editor_.cutReason(static_cast<std::size_t>(row));
    showText(*reason_, reason);
    reason_->setToolTip(plainToolTip(reason));
}

} // namespace shotweaver
