#pragma once

#include "editor/ContentView.h"

#include <QWidget>

#include <string>

class QLabel;

namespace shotweaver {

class Stepper;
class Toggle;
class ValueSlider;

/// An additional camera's controls. The row stays the same camera's for as long as it lives.
/// Object names: include-<id>, frequency-<id>, wait-<id>.
class CameraRowView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the row.
    CameraRowView(ContentView& editor, const std::string& id, QWidget* parent = nullptr);

    void show(const CameraRow& row);

    const std::string& id() const { return id_; }
    /// Lets the keyboard reach the row's controls right after `previous`. Quick for rows from the
    /// last one to the first: a control then stands by the one before it, not far behind it.
    void followInTabOrder(QWidget* previous);

  private:
    QWidget* makeFrequency();

    std::string id_;
    Toggle* included_;
    QWidget* frequencyBlock_ = nullptr;
    QLabel* frequencyLabel_ = nullptr;
    ValueSlider* frequency_;
    QLabel* choiceShare_ = nullptr;
    QLabel* frequencyHelp_;
    Stepper* wait_;
};

} // namespace shotweaver
