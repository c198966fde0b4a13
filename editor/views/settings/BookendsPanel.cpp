#include "editor/views/settings/BookendsPanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/ControlRanges.h"
#include "widgets/Controls.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <functional>

namespace shotweaver {

namespace {

constexpr int toggleWidth = 100;
constexpr int stepperWidth = 140;

} // namespace

BookendsPanel::BookendsPanel(ContentView& editor, QWidget* parent)
    : QGroupBox(tr("Opening and closing shots"), parent), editor_(editor),
      opening_(makeRow(QStringLiteral("opening"), tr("Opening"),
                       {&ContentView::setOpeningEnabled, &ContentView::setOpeningCamera,
                        &ContentView::setOpeningSeconds})),
      closing_(makeRow(QStringLiteral("closing"), tr("Closing"),
                       {&ContentView::setClosingEnabled, &ContentView::setClosingCamera,
                        &ContentView::setClosingSeconds})) {
    QVBoxLayout* const layout = panelLayout(this);
    layout->addLayout(layOut(opening_));
    layout->addLayout(layOut(closing_));
    layout->addWidget(helpLabel(panelTexts::bookendsHelp));
    refresh();
}

BookendsPanel::Row BookendsPanel::makeRow(const QString& prefix, const QString& title,
                                          const Operations& operations) {
    const Row row{new Toggle(title), new Picker(tr("Camera")), new Stepper(shotLengthRange, title)};
    row.enabled->setObjectName(prefix + QStringLiteral("Enabled"));
    row.camera->setObjectName(prefix + QStringLiteral("Camera"));
    row.camera->setAccessibleDescription(title);
    row.seconds->setObjectName(prefix + QStringLiteral("Seconds"));
    connect(row.enabled, &Toggle::switched, this,
            [this, operations](bool isOn) { std::invoke(operations.setEnabled, editor_, isOn); });
    connect(row.camera, &Picker::chosen, this, [this, operations](const std::string& id) {
        std::invoke(operations.setCamera, editor_, id);
    });
    connect(row.seconds, &Stepper::stepped, this, [this, operations](double seconds) {
        std::invoke(operations.setSeconds, editor_, seconds);
    });
    return row;
}

QHBoxLayout* BookendsPanel::layOut(const Row& row) {
    row.enabled->setFixedWidth(style::scaled(toggleWidth));
    row.seconds->setFixedWidth(style::scaled(stepperWidth));
    QHBoxLayout* const layout = rowLayout();
    layout->addWidget(row.enabled);
    layout->addWidget(titleLabel(row.camera->accessibleName(), row.camera));
    layout->addWidget(row.camera, 1);
    layout->addWidget(row.seconds);
    return layout;
}

void BookendsPanel::show(const Row& row, bool isEnabled, const std::vector<PickerOption>& cameras,
                         const std::string& camera, double seconds) {
    row.enabled->show(isEnabled);
    row.camera->show(cameras, camera);
    row.camera->setEnabled(isEnabled);
    row.seconds->show(seconds, secondsLabel(seconds));
    row.seconds->setEnabled(isEnabled);
}

void BookendsPanel::refresh() {
    const EditorFields& fields = editor_.fields();
    const std::vector<PickerOption> cameras = editor_.cameraOptions();
    show(opening_, fields.openingEnabled, cameras, fields.openingCamera, fields.openingSeconds);
    show(closing_, fields.closingEnabled, cameras, fields.closingCamera, fields.closingSeconds);
}

} // namespace shotweaver
