#include "editor/views/settings/BookendsPanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/Binding.h"
#include "editor/views/settings/ControlRanges.h"
#include "widgets/PanelLayout.h"
#include "widgets/Picker.h"
#include "widgets/Stepper.h"
#include "widgets/Style.h"
#include "widgets/Toggle.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <functional>

namespace shotweaver {

namespace {

constexpr int toggleWidth = 100;
constexpr int stepperWidth = 140;

} // namespace

BookendsPanel::BookendsPanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Opening and closing shots"), parent), editor_(editor),
      opening_(
          makeRow(QStringLiteral("opening"), QStringLiteral("Opening"), &EditSettings::opening)),
      closing_(
          makeRow(QStringLiteral("closing"), QStringLiteral("Closing"), &EditSettings::closing)) {
    QVBoxLayout* const layout = panelLayout(this);
    layout->addLayout(layOut(opening_));
    layout->addLayout(layOut(closing_));
    layout->addWidget(helpLabel(panelTexts::bookendsHelp));
    refresh();
}

BookendsPanel::Row BookendsPanel::makeRow(const QString& prefix, const QString& title,
                                          Bookend EditSettings::*shot) {
    const Row row{new Toggle(title), new Picker(QStringLiteral("Camera")),
                  new Stepper(shotLengthRange, title)};
    row.enabled->setObjectName(prefix + QStringLiteral("Enabled"));
    row.camera->setObjectName(prefix + QStringLiteral("Camera"));
    row.camera->setAccessibleDescription(title);
    row.seconds->setObjectName(prefix + QStringLiteral("Seconds"));
    bind(row.enabled, editor_,
         [shot](EditSettings& settings) -> bool& { return std::invoke(shot, settings).isEnabled; });
    bind(row.camera, editor_, [shot](EditSettings& settings) -> std::string& {
        return std::invoke(shot, settings).camera;
    });
    bind(row.seconds, editor_,
         [shot](EditSettings& settings) -> double& { return std::invoke(shot, settings).seconds; });
    return row;
}

/// The length under the camera, so that names have room in a narrow column.
QLayout* BookendsPanel::layOut(const Row& row) {
    row.enabled->setFixedWidth(style::scaled(toggleWidth));
    row.seconds->setFixedWidth(style::scaled(stepperWidth));
    auto* const grid = new QGridLayout;
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(style::scaled(style::close));
    grid->setVerticalSpacing(style::scaled(style::tight));
    grid->setColumnStretch(2, 1);
    grid->addWidget(row.enabled, 0, 0);
    grid->addWidget(titleLabel(row.camera->accessibleName(), row.camera), 0, 1);
    grid->addWidget(row.camera, 0, 2);
    grid->addWidget(row.seconds, 1, 2);
    return grid;
}

void BookendsPanel::show(const Row& row, const Bookend& shot,
                         const std::vector<PickerOption>& cameras) {
    row.enabled->show(shot.isEnabled);
    row.camera->show(cameras, shot.camera);
    row.camera->setEnabled(shot.isEnabled);
    row.seconds->show(shot.seconds, secondsLabel(shot.seconds));
    row.seconds->setEnabled(shot.isEnabled);
}

void BookendsPanel::refresh() {
    if (!editor_.project()) return;
    const EditSettings& settings = editor_.fields().settings;
    const std::vector<PickerOption> cameras = cameraOptions(*editor_.project());
    show(opening_, settings.opening, cameras);
    show(closing_, settings.closing, cameras);
}

} // namespace shotweaver
