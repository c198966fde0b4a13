#include "editor/views/settings/CoveragePanel.h"

#include "editor/PanelTexts.h"
#include "editor/views/settings/CoverageBarView.h"
#include "widgets/ElidedLabel.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListView>
#include <QStringListModel>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

namespace shotweaver {

namespace {

// Points.
constexpr int labelWidth = 170;

QLabel* timecodeLabel(const QString& name) {
    QLabel* const label = style::label(style::TextStyle::caption, style::secondary());
    label->setFont(style::withEqualDigits(label->font()));
    label->setObjectName(name);
    return label;
}

} // namespace

CoverageRow::CoverageRow(const QString& name, QWidget* parent)
    : QWidget(parent), label_(new ElidedLabel(style::TextStyle::callout)),
      bar_(new CoverageBarView) {
    label_->setFixedWidth(style::scaled(labelWidth));
    bar_->setObjectName(name);
    QHBoxLayout* const row = rowLayout(this);
    row->addWidget(label_);
    row->addWidget(bar_);
}

void CoverageRow::show(const CoverageBar& bar, const std::shared_ptr<const Project>& project) {
    label_->show(bar.label);
    bar_->show(bar, project);
}

CoveragePanel::CoveragePanel(ContentView& editor, QWidget* parent)
    : QGroupBox(QStringLiteral("Recording coverage"), parent), editor_(editor),
      anglePlace_(new QWidget), angleRows_(columnLayout(anglePlace_)),
      audio_(new CoverageRow(QStringLiteral("audioCoverage"))),
      gaps_(new CoverageRow(QStringLiteral("gapCoverage"))) {
    QVBoxLayout* const layout = panelLayout(this);
    layout->addWidget(helpLabel(panelTexts::coverageCaption));
    QVBoxLayout* const rows = columnLayout();
    rows->addWidget(makeAxis());
    rows->addWidget(anglePlace_);
    rows->addWidget(audio_);
    rows->addWidget(gaps_);
    layout->addLayout(rows);
    layout->addWidget(makeSummary());
    refresh();
}

QWidget* CoveragePanel::makeAxis() {
    auto* const axis = new QWidget;
    QLabel* const title = style::label(style::TextStyle::callout, style::secondary());
    title->setText(QStringLiteral("Project"));
    title->setFixedWidth(style::scaled(labelWidth));
    axisStart_ = timecodeLabel(QStringLiteral("axisStart"));
    axisEnd_ = timecodeLabel(QStringLiteral("axisEnd"));
    QHBoxLayout* const row = rowLayout(axis);
    row->addWidget(title);
    row->addWidget(axisStart_);
    row->addStretch();
    row->addWidget(axisEnd_);
    return axis;
}

QWidget* CoveragePanel::makeSummary() {
    message_ = new WrappedLabel(style::TextStyle::caption, style::accent());
    message_->setObjectName(QStringLiteral("coverageMessage"));
    complete_ = new WrappedLabel(style::TextStyle::caption, style::secondary());
    complete_->setObjectName(QStringLiteral("coverageComplete"));
    gapHeading_ = new QToolButton;
    gapHeading_->setObjectName(QStringLiteral("uncoveredSections"));
    gapHeading_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    gapHeading_->setFocusPolicy(Qt::StrongFocus);
    gapHeading_->setCheckable(true);
    connect(gapHeading_, &QToolButton::toggled, this, &CoveragePanel::refresh);
    auto* const summary = new QWidget;
    QVBoxLayout* const column = columnLayout(summary);
    for (QWidget* const part :
         std::initializer_list<QWidget*>{message_, complete_, gapHeading_, makeGapList()})
        column->addWidget(part, 0, Qt::AlignTop);
    column->addStretch();
    // The same for one that stays short, so that typing timecodes moves nothing below.
    summary->setMinimumHeight(2 * complete_->fontMetrics().lineSpacing());
    return summary;
}

QWidget* CoveragePanel::makeGapList() {
    gapTexts_ = new QStringListModel(this);
    gapList_ = new QListView;
    gapList_->setObjectName(QStringLiteral("uncoveredSectionList"));
    gapList_->setAccessibleName(QStringLiteral("Uncovered video sections"));
    gapList_->setFont(style::withEqualDigits(style::font(style::TextStyle::caption)));
    gapList_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    gapList_->setUniformItemSizes(true);
    gapList_->setModel(gapTexts_);
    return gapList_;
}

void CoveragePanel::refresh() {
    const CoverageContent& content = editor_.coverageContent();
    const auto& project = editor_.fields().project;
    showText(*axisStart_, content.axisStart);
    showText(*axisEnd_, content.axisEnd);
    refreshAngles(content.angles);
    audio_->setVisible(content.audio.has_value());
    if (content.audio) audio_->show(*content.audio, project);
    gaps_->show(content.gaps, project);
    refreshSummary(content.summary);
}

void CoveragePanel::refreshAngles(const std::vector<CoverageBar>& bars) {
    for (; angles_.size() > bars.size(); angles_.pop_back())
        delete angles_.back();
    const LayoutPause pause(this);
    while (angles_.size() < bars.size()) {
        const QString name = QStringLiteral("coverage-%1").arg(angles_.size());
        angles_.push_back(new CoverageRow(name));
        angleRows_->addWidget(angles_.back());
        angles_.back()->setVisible(true);
    }
    for (std::size_t row = 0; row < bars.size(); ++row)
        angles_[row]->show(bars[row], editor_.fields().project);
}

void CoveragePanel::refreshSummary(const CoverageSummary& summary) {
    using Kind = CoverageSummary::Kind;
    showText(*message_, summary.text);
    message_->setVisible(summary.kind == Kind::message);
    showText(*complete_, summary.text);
    complete_->setVisible(summary.kind == Kind::complete);
    gapHeading_->setText(toQt(summary.text));
    gapHeading_->setArrowType(gapHeading_->isChecked() ? Qt::DownArrow : Qt::RightArrow);
    gapHeading_->setVisible(summary.kind == Kind::gaps);
    const bool isListShown = summary.kind == Kind::gaps && gapHeading_->isChecked();
    gapList_->setVisible(isListShown);
    if (isListShown) refreshGapList(summary.gaps);
}

/// As high as its lines, up to a few of them: there may be thousands.
void CoveragePanel::refreshGapList(const std::vector<std::string>& gaps) {
    constexpr int mostLines = 8;
    QStringList texts;
    for (const std::string& gap : gaps)
        texts.append(toQt(gap));
    if (texts == gapTexts_->stringList()) return;
    gapTexts_->setStringList(texts);
    const int lines = std::min(static_cast<int>(texts.size()), mostLines);
    gapList_->setFixedHeight(lines * gapList_->sizeHintForRow(0) + 2 * gapList_->frameWidth());
}

} // namespace shotweaver
