#include "editor/views/settings/CameraRowView.h"

#include "editor/views/settings/Binding.h"
#include "editor/views/settings/ControlRanges.h"
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

#include <initializer_list>

namespace shotweaver {

namespace {

constexpr int frequencyWidth = 280;

} // namespace

CameraRowView::CameraRowView(ContentView& editor, const std::string& id, QWidget* parent)
    : QWidget(parent), id_(id), included_(new Toggle),
      frequency_(new ValueSlider(frequencyRange, QString())),
      frequencyHelp_(new WrappedLabel(style::TextStyle::caption, style::help())),
      wait_(new Stepper(waitRange)) {
    included_->setObjectName(QStringLiteral("include-") + toQt(id));
    frequency_->setObjectName(QStringLiteral("frequency-") + toQt(id));
    wait_->setObjectName(QStringLiteral("wait-") + toQt(id));
    bind(included_, editor, [id](EditSettings& settings, bool isIncluded) {
        if (isIncluded)
            settings.otherCameras.insert(id);
        else
            settings.otherCameras.erase(id);
    });
    bind(frequency_, editor,
         [id](EditSettings& settings) -> double& { return settings.frequencies[id]; });
    bind(wait_, editor,
         [id](EditSettings& settings) -> double& { return settings.returnTimes[id]; });

    frequencyHelp_->setFixedWidth(style::scaled(frequencyWidth));
    QVBoxLayout* const frequency = columnLayout();
    // The first lines of both sides are level.
    frequency->setContentsMargins(0, style::scaled(2), 0, 0);
    frequency->addWidget(makeFrequency());
    frequency->addWidget(frequencyHelp_);
    QHBoxLayout* const beside = rowLayout();
    beside->addWidget(included_, 1, Qt::AlignTop);
    beside->addLayout(frequency);
    QVBoxLayout* const column = columnLayout(this);
    column->setSpacing(style::scaled(style::close));
    column->addWidget(divider());
    column->addLayout(beside);
    column->addWidget(wait_);
}

QWidget* CameraRowView::makeFrequency() {
    frequencyLabel_ = titleLabel(QString());
    frequencyLabel_->setFont(style::withEqualDigits(frequencyLabel_->font()));
    // Two digits or one, the slider stays where it is.
    frequencyLabel_->setMinimumWidth(style::scaled(92));
    choiceShare_ = titleLabel(QString());
    choiceShare_->setFont(style::withEqualDigits(style::font(style::TextStyle::caption)));
    frequencyBlock_ = new QWidget;
    QHBoxLayout* const row = rowLayout();
    row->addWidget(frequencyLabel_);
    row->addWidget(frequency_, 1);
    QVBoxLayout* const column = columnLayout(frequencyBlock_);
    column->addLayout(row);
    column->addWidget(choiceShare_);
    return frequencyBlock_;
}

void CameraRowView::show(const CameraRow& row) {
    included_->showLabel(row.label);
    included_->show(row.isIncluded);
    showText(*frequencyLabel_, row.frequencyLabel);
    frequency_->show(row.frequency);
    frequency_->setAccessibleName(toQt(row.frequencyAccessibleName));
    showText(*choiceShare_, row.choiceShare);
    frequencyBlock_->setEnabled(row.isFrequencyEnabled);
    showText(*frequencyHelp_, row.frequencyHelp);
    wait_->show(row.wait, row.waitLabel);
    wait_->setAccessibleDescription(toQt(row.label));
    wait_->setEnabled(row.isIncluded);
}

void CameraRowView::followInTabOrder(QWidget* previous) {
    for (QWidget* const control : std::initializer_list<QWidget*>{wait_, frequency_, included_})
        setTabOrder(previous, control);
}

} // namespace shotweaver
