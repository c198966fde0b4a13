#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

#include <memory>
#include <string>
#include <vector>

class QLabel;
class QListView;
class QStringListModel;
class QToolButton;
class QVBoxLayout;

namespace shotweaver {

class CoverageBarView;
class CoverageRow;
class ElidedLabel;

/// "Recording coverage": a bar for each angle, the heard audio and the gaps, and what they mean
/// for the plan. Object names: axisStart, axisEnd, coverage-<row>, audioCoverage, gapCoverage,
/// coverageMessage, coverageComplete, uncoveredSections, uncoveredSectionList.
class CoveragePanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit CoveragePanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    QWidget* makeAxis();
    QWidget* makeSummary();
    QWidget* makeGapList();
    void refreshAngles(const std::vector<CoverageBar>& bars);
    void refreshSummary(const CoverageSummary& summary);
    void refreshGapList(const std::vector<std::string>& gaps);

    ContentView& editor_;
    QLabel* axisStart_ = nullptr;
    QLabel* axisEnd_ = nullptr;
    QWidget* anglePlace_; // before the other rows, also to a screen reader
    QVBoxLayout* angleRows_;
    std::vector<CoverageRow*> angles_;
    CoverageRow* audio_;
    CoverageRow* gaps_;
    QLabel* message_ = nullptr;
    QLabel* complete_ = nullptr;
    QToolButton* gapHeading_ = nullptr;
    QListView* gapList_ = nullptr;
    QStringListModel* gapTexts_ = nullptr;
};

/// A label and its bar.
class CoverageRow : public QWidget {
    Q_OBJECT

  public:
    explicit CoverageRow(const QString& name, QWidget* parent = nullptr);

    void show(const CoverageBar& bar, const std::shared_ptr<const Project>& project);

  private:
    ElidedLabel* label_;
    CoverageBarView* bar_;
};

} // namespace shotweaver
