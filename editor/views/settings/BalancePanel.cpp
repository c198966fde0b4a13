#include "editor/views/settings/BalancePanel.h"

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

BalancePanel::BalancePanel(ContentView& editor, QWidget* parent)
    : QGroupBox(tr("Camera balance and pacing"), parent), editor_(editor),
      target_(style::wrappingLabel(style::TextStyle::body)),
      share_(new ValueSlider(shareRange, tr("Main camera's share of screen time"))),
      mainMinimum_(makeStepper(QStringLiteral("mainMinimum"), tr("Main camera"),
                               &ContentView::setMainMinimum)),
      mainMaximum_(makeStepper(QStringLiteral("mainMaximum"), tr("Main camera"),
                               &ContentView::setMainMaximum)),
      otherMinimum_(makeStepper(QStringLiteral("otherMinimum"), tr("Other cameras"),
                                &ContentView::setOtherMinimum)),
      otherMaximum_(makeStepper(QStringLiteral("otherMaximum"), tr("Other cameras"),
                                &ContentView::setOtherMaximum)),
      doubleMain_(new Toggle(tr("Randomly double main camera holds"))) {
    target_->setObjectName(QStringLiteral("balance"));
    share_->setObjectName(QStringLiteral("share"));
    doubleMain_->setObjectName(QStringLiteral("doubleMain"));
    connect(share_, &ValueSlider::moved, this, [this](double share) { editor_.setShare(share); });
    connect(doubleMain_, &Toggle::switched, this,
            [this](bool isOn) { editor_.setDoubleMain(isOn); });

    QVBoxLayout* const layout = panelLayout(this);
    layout->addWidget(target_);
    layout->addWidget(share_);
    layout->addLayout(rangeRow(tr("Main camera"), mainMinimum_, mainMaximum_));
    layout->addLayout(rangeRow(tr("Other cameras"), otherMinimum_, otherMaximum_));
    layout->addWidget(helpLabel(panelTexts::rangesNote));
    layout->addWidget(doubleMain_);
    layout->addWidget(helpLabel(panelTexts::doublingHelp));
    refresh();
}

Stepper* BalancePanel::makeStepper(const QString& name, const QString& owner, SetSeconds set) {
    auto* const stepper = new Stepper(shotLengthRange, owner);
    stepper->setObjectName(name);
    connect(stepper, &Stepper::stepped, this,
            [this, set](double value) { std::invoke(set, editor_, value); });
    return stepper;
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
    const EditorFields& fields = editor_.fields();
    showText(*target_, balanceText(fields.aShare));
    share_->show(fields.aShare);
    mainMinimum_->show(fields.mainMinimum, minimumLabel(fields.mainMinimum));
    mainMaximum_->show(fields.mainMaximum, maximumLabel(fields.mainMaximum));
    otherMinimum_->show(fields.otherMinimum, minimumLabel(fields.otherMinimum));
    otherMaximum_->show(fields.otherMaximum, maximumLabel(fields.otherMaximum));
    doubleMain_->show(fields.doubleMain);
}

} // namespace shotweaver
