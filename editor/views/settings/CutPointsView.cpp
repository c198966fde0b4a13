#include "editor/views/settings/CutPointsView.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/Binding.h"
#include "widgets/ButtonAction.h"
#include "widgets/PanelLayout.h"
#include "widgets/Toggle.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace shotweaver {

CutPointsView::CutPointsView(ContentView& editor, QWidget* parent)
    : QWidget(parent), editor_(editor), cutAtMarkers_(new Toggle), followMarkers_(new Toggle),
      help_(helpLabel("")),
      chooseTimes_(makeActionButton({QStringLiteral("chooseCutTimes"),
                                     QStringLiteral("Cut at times from a file…"),
                                     QString::fromUtf8(panelTexts::cutTimesHelp),
                                     {}},
                                    this, [this] { editor_.chooseCutTimes(); })),
      times_(new WrappedLabel(style::TextStyle::callout)),
      removeTimes_(makeActionButton(
          {QStringLiteral("removeCutTimes"), QStringLiteral("Remove"), {}, {}}, this,
          [this] { editor_.edit([](EditSettings& settings) { settings.cutTimes.clear(); }); })) {
    cutAtMarkers_->setObjectName(QStringLiteral("cutAtMarkers"));
    followMarkers_->setObjectName(QStringLiteral("followMarkers"));
    help_->setObjectName(QStringLiteral("markersHelp"));
    times_->setObjectName(QStringLiteral("cutTimes"));
    bind(cutAtMarkers_, editor_, &EditSettings::cutAtMarkers);
    bind(followMarkers_, editor_, &EditSettings::followMarkers);

    QHBoxLayout* const chosen = rowLayout();
    chosen->addWidget(times_, 1);
    chosen->addWidget(removeTimes_);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(style::scaled(style::normal));
    for (QWidget* const widget :
         {static_cast<QWidget*>(cutAtMarkers_), static_cast<QWidget*>(followMarkers_),
          static_cast<QWidget*>(help_)})
        column->addWidget(widget);
    column->addWidget(chooseTimes_, 0, Qt::AlignLeft);
    column->addLayout(chosen);
    refresh();
}

void CutPointsView::refresh() {
    const Project* const project = editor_.project();
    if (!project) return;
    const EditSettings& settings = editor_.fields().settings;
    const Markers& markers = project->markers;
    cutAtMarkers_->show(settings.cutAtMarkers);
    cutAtMarkers_->showLabel(cutAtMarkersLabel(markers));
    cutAtMarkers_->setEnabled(!markers.cutPoints.empty());
    followMarkers_->show(settings.followMarkers);
    followMarkers_->showLabel(followMarkersLabel(markers));
    followMarkers_->setEnabled(!markers.notes.empty());
    showText(*help_, markersHelp(markers));
    const bool hasTimes = !settings.cutTimes.empty();
    // Before the button that has the focus hides.
    if (!hasTimes && removeTimes_->hasFocus()) chooseTimes_->setFocus();
    showText(*times_, editor_.cutTimesText());
    times_->setVisible(hasTimes);
    removeTimes_->setVisible(hasTimes);
}

} // namespace shotweaver
