#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

class QLabel;
class QLayout;

namespace shotweaver {

class Stepper;
class Toggle;
class CutPointsView;
class ValueSlider;

/// "Camera balance and pacing": the main camera's share and the shot lengths. Object names:
/// balance, share, mainMinimum, mainMaximum, otherMinimum, otherMaximum, doubleMain, shareForecast.
class BalancePanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit BalancePanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    static Stepper* makeStepper(const QString& name, const QString& owner);
    void bind();
    static QLayout* rangeRow(const QString& title, Stepper* minimum, Stepper* maximum);

    ContentView& editor_;
    QLabel* target_;
    ValueSlider* share_;
    QLabel* forecast_;
    Stepper* mainMinimum_;
    Stepper* mainMaximum_;
    Stepper* otherMinimum_;
    Stepper* otherMaximum_;
    Toggle* doubleMain_;
    CutPointsView* cutPoints_;
};

} // namespace shotweaver
