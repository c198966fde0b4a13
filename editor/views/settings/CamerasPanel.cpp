#include "editor/views/settings/CamerasPanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/Binding.h"
#include "editor/views/settings/CameraRowView.h"
#include "editor/views/settings/ControlRanges.h"
#include "planning/EditPlan.h"
#include "planning/ProjectDefaults.h"
#include "widgets/PanelLayout.h"
#include "widgets/Picker.h"
#include "widgets/Stepper.h"
#include "widgets/Style.h"
#include "widgets/Toggle.h"
#include "widgets/WrappedText.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace shotweaver {

CamerasPanel::CamerasPanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Cameras and audio"), parent), editor_(editor),
      mainCamera_(new Picker(QStringLiteral("Main camera"))),
      audio_(new Picker(QStringLiteral("Continuous audio"))), mainWait_(new Stepper(waitRange)),
      rowPlace_(new QWidget), rowLayout_(columnLayout(rowPlace_)),
      varyOthers_(new Toggle(QStringLiteral("Not the same additional camera twice in a row"))),
      varyHelp_(helpLabel("")) {
    varyOthers_->setObjectName(QStringLiteral("varyOthers"));
    mainCamera_->setObjectName(QStringLiteral("mainCamera"));
    audio_->setObjectName(QStringLiteral("audio"));
    mainWait_->setObjectName(QStringLiteral("mainWait"));
    bind();

    auto* const pickers = new QGridLayout;
    pickers->setSpacing(style::scaled(style::close));
    pickers->setColumnStretch(1, 1);
    pickers->addWidget(titleLabel(mainCamera_->accessibleName(), mainCamera_), 0, 0);
    pickers->addWidget(mainCamera_, 0, 1);
    pickers->addWidget(titleLabel(audio_->accessibleName(), audio_), 1, 0);
    pickers->addWidget(audio_, 1, 1);
    QLabel* const title = style::label(style::TextStyle::headline);
    title->setText(QStringLiteral("Additional cameras"));
    rowLayout_->setSpacing(style::scaled(style::normal));

    QVBoxLayout* const layout = panelLayout(this);
    layout->addLayout(pickers);
    layout->addWidget(mainWait_);
    layout->addWidget(title);
    layout->addWidget(rowPlace_);
    layout->addWidget(varyOthers_);
    layout->addWidget(varyHelp_);
    layout->addWidget(helpLabel(panelTexts::waitHelp));
    layout->addWidget(helpLabel(panelTexts::waitPriorityHelp));
    refresh();
}

void CamerasPanel::bind() {
    using shotweaver::bind;
    bind(mainCamera_, editor_, [this](EditSettings& settings, const std::string& id) {
        chooseMainCamera(settings, id, *editor_.project());
    });
    bind(audio_, editor_, &EditSettings::audio);
    bind(varyOthers_, editor_, &EditSettings::varyOthers);
    bind(mainWait_, editor_, [](EditSettings& settings) -> double& {
        return settings.returnTimes[settings.mainCamera];
    });
}

void CamerasPanel::refresh() {
    const Project* const project = editor_.project();
    if (!project) return;
    const EditSettings& settings = editor_.fields().settings;
    mainCamera_->show(cameraOptions(*project), settings.mainCamera);
    audio_->show(audioOptions(settings, *project), settings.audio);
    mainWait_->show(mainWait(settings), mainWaitLabel(settings));
    varyOthers_->show(settings.varyOthers);
    showText(*varyHelp_, selectedOtherCameras(settings, *project).size() == 2
                             ? panelTexts::varyTwoHelp
                             : panelTexts::varyHelp);
    const std::vector<CameraRow> rows = cameraRows(settings, *project);
    if (!hasRowsOf(rows)) rebuildRows(rows);
    for (std::size_t row = 0; row < rows.size(); ++row)
        rows_[row]->show(rows[row]);
}

bool CamerasPanel::hasRowsOf(const std::vector<CameraRow>& rows) const {
    return std::equal(
        rows.begin(), rows.end(), rows_.begin(), rows_.end(),
        [](const CameraRow& row, const CameraRowView* view) { return row.id == view->id(); });
}

/// A camera that stays keeps its row, and with it the focus.
void CamerasPanel::rebuildRows(const std::vector<CameraRow>& rows) {
    std::vector<CameraRowView*> rebuilt;
    const LayoutPause pause(rowPlace_);
    for (const CameraRow& row : rows) {
        rebuilt.push_back(takeRow(row.id));
        rowLayout_->addWidget(rebuilt.back());
        rebuilt.back()->raise(); // a screen reader meets the rows in their order
        rebuilt.back()->setVisible(true);
    }
    for (auto view = rebuilt.rbegin(); view != rebuilt.rend(); ++view)
        (*view)->followInTabOrder(mainWait_);
    // What is left may be in the middle of a signal.
    for (CameraRowView* const view : std::exchange(rows_, std::move(rebuilt))) {
        view->hide();
        view->deleteLater();
    }
}

/// The row of a camera: one that exists, or a new one.
CameraRowView* CamerasPanel::takeRow(const std::string& id) {
    const auto found = std::find_if(rows_.begin(), rows_.end(),
                                    [&](const CameraRowView* view) { return view->id() == id; });
    if (found == rows_.end()) return new CameraRowView(editor_, id, rowPlace_);
    CameraRowView* const view = *found;
    rows_.erase(found);
    rowLayout_->removeWidget(view);
    return view;
}

} // namespace shotweaver
