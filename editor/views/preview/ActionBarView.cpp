#include "editor/views/preview/ActionBarView.h"

#include "editor/PanelTexts.h"
#include "widgets/ButtonAction.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace shotweaver {

namespace {

QHBoxLayout* addRow(QVBoxLayout& rows) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(style::scaled(style::close));
    rows.addLayout(row);
    return row;
}

} // namespace

ActionBarView::ActionBarView(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor),
      generate_(addButton("generate", QString(), panelTexts::generateHelp, Qt::CTRL | Qt::Key_G,
                          &ContentView::generateEdit)),
      shuffleSelection_(makeActionButton({QStringLiteral("shuffleSelection"),
                                          QStringLiteral("Shuffle selection"),
                                          QString::fromUtf8(panelTexts::shuffleSelectionHelp),
                                          {}},
                                         this, [this] { Q_EMIT selectionShuffled(); })),
      back_(addButton("back", QStringLiteral("Back"), panelTexts::backHelp,
                      Qt::CTRL | Qt::Key_BracketLeft, &ContentView::goBack)),
      forward_(addButton("forward", QStringLiteral("Forward"), panelTexts::forwardHelp,
                         Qt::CTRL | Qt::Key_BracketRight, &ContentView::goForward)),
      export_(addButton("export", QStringLiteral("Export to Final Cut…"), panelTexts::exportHelp,
                        Qt::CTRL | Qt::Key_E, &ContentView::exportEdit)),
      position_(style::label(style::TextStyle::callout, style::secondary())),
      hint_(new WrappedLabel(style::TextStyle::callout, style::secondary())),
      kept_(style::label(style::TextStyle::callout, style::secondary())),
      letGo_(addButton("letGo", QStringLiteral("Let go of all"), panelTexts::letGoHelp, {},
                       &ContentView::letGoOfAll)) {
    shuffleSelection_->hide();
    kept_->setObjectName(QStringLiteral("kept"));
    generate_->setProperty("prominent", true);
    position_->setObjectName(QStringLiteral("position"));
    position_->setFont(style::withEqualDigits(position_->font()));
    hint_->setObjectName(QStringLiteral("hint"));
    layOut();
    refresh();
}

QPushButton* ActionBarView::addButton(const char* name, const QString& text, const char* help,
                                      const QKeySequence& shortcut,
                                      void (ContentView::*operation)()) {
    return makeActionButton({QString::fromUtf8(name), text, QString::fromUtf8(help), shortcut},
                            this, [this, operation] { std::invoke(operation, editor_); });
}

/// In two rows, since the column may be little wider than three buttons.
void ActionBarView::layOut() {
    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(style::scaled(style::close));
    auto* const first = addRow(*rows);
    for (QPushButton* const button : {generate_, shuffleSelection_, back_, forward_})
        first->addWidget(button);
    first->addStretch();
    auto* const second = addRow(*rows);
    second->addWidget(position_);
    second->addWidget(kept_);
    second->addWidget(letGo_);
    second->addWidget(hint_, 1);
    second->addStretch();
    second->addWidget(export_);
}

void ActionBarView::refresh() {
    const ActionBar bar = editor_.actionBar();
    if (bar == shown_) return;
    shown_ = bar;
    generate_->setText(toQt(bar.generateLabel));
    generate_->setEnabled(bar.canGenerate);
    back_->setEnabled(bar.canGoBack);
    forward_->setEnabled(bar.canGoForward);
    export_->setEnabled(bar.canExport);
    showText(*position_, bar.position.value_or(""));
    position_->setVisible(bar.position.has_value());
    showText(*hint_, bar.hint.value_or(""));
    hint_->setVisible(bar.hint.has_value());
    showText(*kept_, bar.kept.value_or(""));
    kept_->setVisible(bar.kept.has_value());
    letGo_->setVisible(bar.kept.has_value());
}

void ActionBarView::showSelection(bool hasSelection) {
    shuffleSelection_->setVisible(hasSelection);
}

} // namespace shotweaver
