#pragma once

#include "widgets/ControlRange.h"

#include <QWidget>

#include <string>

class QLabel;
class QLineEdit;
class QToolButton;

namespace shotweaver {

/// A label that tells a value, with buttons that step it. Up, Down and the page keys step it too,
/// Home and End go to its limits. A click on the label, Return, and a digit let a whole number be
/// typed, which Return or leaving the field takes, within the range; Escape leaves it as it was.
/// Object name of the field: typedValue.
class Stepper : public QWidget {
    Q_OBJECT

  public:
    /// `owner` tells a screen reader whose value it is.
    explicit Stepper(const ControlRange& range, const QString& owner = {},
                     QWidget* parent = nullptr);

    /// `label` holds the value as text, and is the accessible name as well.
    void show(double value, const std::string& label);

    double number() const { return number_; }
    const ControlRange& controlRange() const { return range_; }
    /// What a click on a button does: moves by so many steps, within the range.
    void stepBy(int steps);
    /// Moves by whole steps to where it is closest to `value`.
    void moveTo(double value);
    QString labelText() const;

  Q_SIGNALS:
    void stepped(double value);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QToolButton* addButton(const QString& text, int steps);
    void updateButtons();
    void set(double value);
    void beginTyping(const QString& text);
    enum class Typed { taken, dropped };
    void endTyping(Typed typed);

    ControlRange range_;
    double number_ = 0;
    QLabel* label_;
    QToolButton* down_;
    QToolButton* up_;
    QLineEdit* field_ = nullptr; // while a value is typed
};

} // namespace shotweaver
