#include "editor/views/settings/BalancePanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/Binding.h"
#include "editor/views/settings/ControlRanges.h"
#include "editor/views/settings/CutPointsView.h"
#include "widgets/PanelLayout.h"
#include "widgets/Stepper.h"
#include "widgets/Style.h"
#include "widgets/Toggle.h"
#include "widgets/ValueSlider.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace shotweaver {

BalancePanel::BalancePanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Camera balance and pacing"), parent), editor_(editor),
      target_(new WrappedLabel(style::TextStyle::body)),
      share_(new ValueSlider(shareRange, QStringLiteral("Main camera's share of screen time"))),
      forecast_(helpLabel("")),
      mainMinimum_(makeStepper(QStringLiteral("mainMinimum"), QStringLiteral("Main camera"))),
      mainMaximum_(makeStepper(QStringLiteral("mainMaximum"), QStringLiteral("Main camera"))),
      otherMinimum_(makeStepper(QStringLiteral("otherMinimum"), QStringLiteral("Other cameras"))),
      otherMaximum_(makeStepper(QStringLiteral("otherMaximum"), QStringLiteral("Other cameras"))),
      doubleMain_(new Toggle(QStringLiteral("Randomly double main camera holds"))),
      cutPoints_(new CutPointsView(editor)) {
    target_->setObjectName(QStringLiteral("balance"));
    share_->setObjectName(QStringLiteral("share"));
    forecast_->setObjectName(QStringLiteral("shareForecast"));
    doubleMain_->setObjectName(QStringLiteral("doubleMain"));
    bind();

    QVBoxLayout* const layout = panelLayout(this);
    layout->addWidget(target_);
    layout->addWidget(share_);
    layout->addWidget(forecast_);
    layout->addLayout(rangeRow(QStringLiteral("Main camera"), mainMinimum_, mainMaximum_));
    layout->addLayout(rangeRow(QStringLiteral("Other cameras"), otherMinimum_, otherMaximum_));
    layout->addWidget(helpLabel(panelTexts::rangesNote));
    layout->addWidget(doubleMain_);
    layout->addWidget(helpLabel(panelTexts::doublingHelp));
    layout->addWidget(cutPoints_);
    refresh();
}

Stepper* BalancePanel::makeStepper(const QString& name, const QString& owner) {
    auto* const stepper = new Stepper(shotLengthRange, owner);
    stepper->setObjectName(name);
    return stepper;
}

void BalancePanel::bind() {
    using shotweaver::bind;
    bind(share_, editor_, &EditSettings::mainShare);
    bind(doubleMain_, editor_, &EditSettings::doubleMain);
    bind(mainMinimum_, editor_, [](EditSettings& settings, double seconds) {
        setMinimum(settings.mainMinimum, settings.mainMaximum, seconds);
    });
    bind(mainMaximum_, editor_, [](EditSettings& settings, double seconds) {
        setMaximum(settings.mainMinimum, settings.mainMaximum, seconds);
    });
    bind(otherMinimum_, editor_, [](EditSettings& settings, double seconds) {
        setMinimum(settings.otherMinimum, settings.otherMaximum, seconds);
    });
    bind(otherMaximum_, editor_, [](EditSettings& settings, double seconds) {
        setMaximum(settings.otherMinimum, settings.otherMaximum, seconds);
    });
}

QLayout* BalancePanel::rangeRow(const QString& title, Stepper* minimum, Stepper* maximum) {
    QHBoxLayout* const steppers = rowLayout();
    steppers->setSpacing(style::scaled(style::wide));
    steppers->addWidget(minimum, 1);
    steppers->addWidget(maximum, 1);
    QVBoxLayout* const row = columnLayout();
    row->addWidget(titleLabel(title));
    row->addLayout(steppers);
    return row;
}

void BalancePanel::refresh() {
    const EditSettings& settings = editor_.fields().settings;
    showText(*target_, balanceText(settings.mainShare));
    share_->show(settings.mainShare);
    if (const Project* const project = editor_.project())
        showText(*forecast_, shareForecast(settings, *project));
    mainMinimum_->show(settings.mainMinimum, minimumLabel(settings.mainMinimum));
    mainMaximum_->show(settings.mainMaximum, maximumLabel(settings.mainMaximum));
    otherMinimum_->show(settings.otherMinimum, minimumLabel(settings.otherMinimum));
    otherMaximum_->show(settings.otherMaximum, maximumLabel(settings.otherMaximum));
    doubleMain_->show(settings.doubleMain);
    cutPoints_->refresh();
}

} // namespace shotweaver
