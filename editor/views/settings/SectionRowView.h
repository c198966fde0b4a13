#pragma once

#include "editor/ContentView.h"

#include <QWidget>

#include <cstddef>
#include <vector>

class QLabel;
class QLayout;
class QPushButton;

namespace shotweaver {

class Picker;
class TextField;

/// The controls of the fixed section at a place of the list. Object names: sectionName-<row>,
/// sectionCamera-<row>, removeSection-<row>, sectionStart-<row>, sectionEnd-<row>,
/// startFault-<row>, endFault-<row>.
class SectionRowView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the row; `row` counts from 0.
    SectionRowView(ContentView& editor, std::size_t row, QWidget* parent = nullptr);

    void show(const SectionDraft& section, const std::vector<PickerOption>& cameras,
              SectionFaults faults);
    /// Gives the start the focus, selected.
    void beginWithStart();

    /// Lets the keyboard reach the row's controls right after `previous`. Quick for rows from the
    /// last one to the first: a control then stands by the one before it, not far behind it.
    void followInTabOrder(QWidget* previous);
    QWidget* lastControl() const;
    QWidget* removeButton() const;

  private:
    void name(QWidget* control, const QString& prefix);
    QLayout* makeHeading();
    QLayout* makeCamera();
    QLayout* makeTimes();
    void bind();
    void bindText(TextField* field, std::string SectionDraft::*text);
    void showFaults();
    void showFault(TextField& field, QLabel& label, const std::string& fault);

    ContentView& editor_;
    std::size_t row_;
    TextField* name_;
    Picker* camera_;
    QPushButton* remove_;
    TextField* start_;
    TextField* end_;
    QLabel* startFault_;
    QLabel* endFault_;
    SectionFaults faults_;
};

} // namespace shotweaver
