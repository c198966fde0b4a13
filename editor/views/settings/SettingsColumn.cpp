#include "editor/views/settings/SettingsColumn.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/BalancePanel.h"
#include "editor/views/settings/BookendsPanel.h"
#include "editor/views/settings/CamerasPanel.h"
#include "editor/views/settings/CoveragePanel.h"
#include "editor/views/settings/PresetsPanel.h"
#include "editor/views/settings/SectionsPanel.h"
#include "widgets/ButtonAction.h"
#include "widgets/PanelLayout.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

namespace shotweaver {

namespace {

constexpr int narrowest = 352;
constexpr int comfortable = 500;

} // namespace

SettingsColumn::SettingsColumn(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), projectLine_(new WrappedLabel(style::TextStyle::headline)),
      undo_(makeActionButton({QStringLiteral("undo"), QStringLiteral("Undo"),
                              QString::fromUtf8(panelTexts::undoHelp), Qt::CTRL | Qt::Key_Z},
                             this, [this] { editor_.undo(); })),
      redo_(makeActionButton({QStringLiteral("redo"), QStringLiteral("Redo"),
                              QString::fromUtf8(panelTexts::redoHelp),
                              Qt::CTRL | Qt::SHIFT | Qt::Key_Z},
                             this, [this] { editor_.redo(); })),
      presets_(new PresetsPanel(editor)), coverage_(new CoveragePanel(editor)),
      cameras_(new CamerasPanel(editor)), balance_(new BalancePanel(editor)),
      bookends_(new BookendsPanel(editor)), sections_(new SectionsPanel(editor)) {
    projectLine_->setObjectName(QStringLiteral("projectLine"));
    QVBoxLayout* const layout = columnLayout(this);
    layout->setSpacing(style::scaled(style::normal));
    QHBoxLayout* const head = rowLayout();
    head->addWidget(projectLine_, 1);
    head->addWidget(undo_, 0, Qt::AlignTop);
    head->addWidget(redo_, 0, Qt::AlignTop);
    layout->addLayout(head);
    for (QWidget* const part : std::initializer_list<QWidget*>{presets_, coverage_, cameras_,
                                                               balance_, bookends_, sections_})
        layout->addWidget(part);
    layout->addStretch();
    refresh();
}

void SettingsColumn::refresh() {
    const Project* const project = editor_.project();
    if (project) showText(*projectLine_, projectLine(*project, editor_.locale()));
    undo_->setEnabled(editor_.canUndo());
    redo_->setEnabled(editor_.canRedo());
    presets_->refresh();
    coverage_->refresh();
    cameras_->refresh();
    balance_->refresh();
    bookends_->refresh();
    sections_->refresh();
}

QSize SettingsColumn::sizeHint() const {
    return {style::scaled(comfortable), QWidget::sizeHint().height()};
}

/// The height follows from the width.
QSize SettingsColumn::minimumSizeHint() const {
    return {style::scaled(narrowest), 0};
}

} // namespace shotweaver
