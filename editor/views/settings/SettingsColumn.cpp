#include "editor/views/settings/SettingsColumn.h"

#include "editor/views/settings/BalancePanel.h"
#include "editor/views/settings/BookendsPanel.h"
#include "editor/views/settings/CamerasPanel.h"
#include "editor/views/settings/CoveragePanel.h"
#include "editor/views/settings/PresetsPanel.h"
#include "editor/views/settings/SectionsPanel.h"
#include "widgets/PanelLayout.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

namespace shotweaver {

namespace {

constexpr int narrowest = 440;
constexpr int comfortable = 500;

} // namespace

SettingsColumn::SettingsColumn(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), projectLine_(new WrappedLabel(style::TextStyle::headline)),
      presets_(new PresetsPanel(editor)), coverage_(new CoveragePanel(editor)),
      cameras_(new CamerasPanel(editor)), balance_(new BalancePanel(editor)),
      bookends_(new BookendsPanel(editor)), sections_(new SectionsPanel(editor)) {
    projectLine_->setObjectName(QStringLiteral("projectLine"));
    QVBoxLayout* const layout = columnLayout(this);
    layout->setSpacing(style::scaled(style::normal));
    for (QWidget* const part : std::initializer_list<QWidget*>{
             projectLine_, presets_, coverage_, cameras_, balance_, bookends_, sections_})
        layout->addWidget(part);
    layout->addStretch();
    refresh();
}

void SettingsColumn::refresh() {
    const Project* const project = editor_.project();
    if (project) showText(*projectLine_, projectLine(*project, editor_.locale()));
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
