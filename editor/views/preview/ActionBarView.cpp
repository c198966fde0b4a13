#include "editor/views/preview/ActionBarView.h"

#include "editor/PanelTexts.h"
#include "editor/views/preview/EditListView.h"
#include "widgets/ButtonAction.h"
#include "widgets/FlowLayout.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QKeySequence>
#include <QPushButton>
#include <QToolButton>

#include <algorithm>
#include <functional>
#include <initializer_list>

namespace shotweaver {

namespace {

constexpr QKeyCombination generateShortcut = Qt::CTRL | Qt::Key_G;

} // namespace

ActionBarView::ActionBarView(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor),
      generate_(addButton("generate", QString(), panelTexts::generateHelp, generateShortcut,
                          &ContentView::generateEdit)),
      back_(addButton("back", QStringLiteral("Back"), panelTexts::backHelp,
                      Qt::CTRL | Qt::Key_BracketLeft, &ContentView::goBack)),
      forward_(addButton("forward", QStringLiteral("Forward"), panelTexts::forwardHelp,
                         Qt::CTRL | Qt::Key_BracketRight, &ContentView::goForward)),
      position_(new QToolButton(this)), edits_(new EditListView(editor, this)),
      export_(addButton("export", QStringLiteral("Export to Final Cut…"), panelTexts::exportHelp,
                        Qt::CTRL | Qt::Key_E, &ContentView::exportEdit)),
      shuffleSelection_(makeActionButton({QStringLiteral("shuffleSelection"),
                                          QStringLiteral("Shuffle selection"),
                                          QString::fromUtf8(panelTexts::shuffleSelectionHelp),
                                          {}},
                                         this, [this] { Q_EMIT selectionShuffled(); })),
      kept_(style::label(style::TextStyle::callout, style::secondary())),
      letGo_(addButton("letGo", QStringLiteral("Let go of all"), panelTexts::letGoHelp, {},
                       &ContentView::letGoOfAll)),
      hint_(new WrappedLabel(style::TextStyle::callout, style::secondary())) {
    shuffleSelection_->setEnabled(false);
    kept_->setObjectName(QStringLiteral("kept"));
    generate_->setProperty("prominent", true);
    position_->setObjectName(QStringLiteral("position"));
    position_->setFocusPolicy(Qt::StrongFocus);
    position_->setToolTip(QStringLiteral("All edits"));
    position_->setFont(style::withEqualDigits(position_->font()));
    connect(position_, &QToolButton::clicked, this, [this] { edits_->openUnder(*position_); });
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

/// In as many rows as the column's width takes.
void ActionBarView::layOut() {
    auto* const flow = new FlowLayout(this, style::scaled(style::close));
    for (QWidget* const widget :
         std::initializer_list<QWidget*>{generate_, back_, forward_, position_, export_,
                                         shuffleSelection_, kept_, letGo_, hint_})
        flow->addWidget(widget);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    // One width under both labels.
    int width = 0;
    for (const char* const label : {"Generate rough edit", "Shuffle rough edit"}) {
        generate_->setText(QString::fromUtf8(label));
        width = std::max(width, generate_->sizeHint().width());
    }
    generate_->setMinimumWidth(width);
}

void ActionBarView::refresh() {
    setHelp(*generate_, toQt(editor_.generateHelp()), generateShortcut);
    const ActionBar bar = editor_.actionBar();
    if (bar == shown_) return;
    shown_ = bar;
    generate_->setText(toQt(bar.generateLabel));
    generate_->setEnabled(bar.canGenerate);
    back_->setEnabled(bar.canGoBack);
    forward_->setEnabled(bar.canGoForward);
    export_->setEnabled(bar.canExport);
    position_->setText(toQt(bar.position.value_or("")));
    position_->setAccessibleName(position_->text());
    position_->setVisible(bar.position.has_value());
    showText(*hint_, bar.hint.value_or(""));
    hint_->setVisible(bar.hint.has_value());
    showText(*kept_, bar.kept.value_or(""));
    kept_->setVisible(bar.kept.has_value());
    letGo_->setVisible(bar.kept.has_value());
}

void ActionBarView::showSelection(bool hasSelection) {
    shuffleSelection_->setEnabled(hasSelection);
}

} // namespace shotweaver
