#pragma once

#include "widgets/HeightCache.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QWidget>

#include <string>
#include <utility>
#include <vector>

class QToolButton;

namespace shotweaver {

/// The controls of the settings column. Showing a value never writes it back: only what the user
/// does is announced. None of them reacts to the wheel, which scrolls the column.

/// What a control steps through.
struct ControlRange {
    double minimum = 0;
    double maximum = 0;
    double step = 1;
};

/// A choice among labelled identifiers.
class Picker : public QComboBox {
    Q_OBJECT

  public:
    explicit Picker(const QString& accessibleName, QWidget* parent = nullptr);

    /// `options` is a list of records with an `id` and a `label`; `current` is the chosen one's
    /// identifier.
    template <class Options>
    void show(const Options& options, const std::string& current) {
        std::vector<Entry> entries;
        for (const auto& option : options)
            entries.push_back({option.id, option.label});
        showEntries(std::move(entries), current);
    }

    void showPopup() override;

  Q_SIGNALS:
    void chosen(const std::string& id);

  protected:
    void initStyleOption(QStyleOptionComboBox* option) const override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    struct Entry {
        std::string id;
        std::string label;

        bool operator==(const Entry&) const = default;
    };

    void showEntries(std::vector<Entry> entries, const std::string& current);

    std::vector<Entry> entries_;
};

/// A slider over a range of steps. A value between two steps stays as it is until it is moved.
class ValueSlider : public QSlider {
    Q_OBJECT

  public:
    ValueSlider(const ControlRange& range, const QString& accessibleName,
                QWidget* parent = nullptr);

    void show(double value);

    double number() const { return number_; }
    const ControlRange& controlRange() const { return range_; }
    /// What dragging does: moves to the step next to `value`.
    void moveTo(double value);

  Q_SIGNALS:
    void moved(double value);

  protected:
    void wheelEvent(QWheelEvent* event) override;

  private:
    int positionOf(double value) const;

    ControlRange range_;
    double number_;
};

/// A label that tells a value, with buttons that step it. Up, Down and the page keys step it too.
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
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QToolButton* addButton(const QString& text, int steps);
    void updateButtons();

    ControlRange range_;
    double number_ = 0;
    QLabel* label_;
    QToolButton* down_;
    QToolButton* up_;
};

/// A check box whose label wraps.
class Toggle : public QCheckBox {
    Q_OBJECT

  public:
    explicit Toggle(const QString& label = {}, QWidget* parent = nullptr);

    void show(bool isOn);
    void showLabel(const std::string& label);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  Q_SIGNALS:
    void switched(bool isOn);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void setLabel(const QString& label);
    int indent() const;

    QString label_;
    mutable HeightCache heights_;
};

/// A line of text. Showing what is in it already leaves the cursor where it is.
class TextField : public QLineEdit {
    Q_OBJECT

  public:
    TextField(const QString& accessibleName, const QString& placeholder, QWidget* parent = nullptr);

    void show(const std::string& text);

  Q_SIGNALS:
    void typed(const std::string& text);
};

/// Shows a text, shortened, unless it is the one on show.
void showText(QLabel& label, const std::string& text);

} // namespace shotweaver
