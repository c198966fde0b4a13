#pragma once

#include <QString>

class QFrame;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLayout;
class QVBoxLayout;
class QWidget;

namespace shotweaver {

/// How the panels of the settings column are laid out: all alike.

/// The layout of a group: what is added stands below one another.
QVBoxLayout* panelLayout(QGroupBox* panel);

/// Keeps a panel's layout still for as long as it lives: otherwise each of many rows that appear
/// has all of them laid out again.
class LayoutPause {
  public:
    /// `panel` has a layout, and outlives the pause.
    explicit LayoutPause(const QWidget* panel);
    ~LayoutPause();
    LayoutPause(const LayoutPause&) = delete;
    LayoutPause& operator=(const LayoutPause&) = delete;

  private:
    QLayout& layout_;
};

/// An empty row, or column, without margins. The caller adds it to a layout, which owns it.
QHBoxLayout* rowLayout(QWidget* parent = nullptr);
QVBoxLayout* columnLayout(QWidget* parent = nullptr);

/// Lets a screen reader meet all that a panel holds in the order of its layouts, not in that in
/// which it was made.
void readInLayoutOrder(QWidget& panel);

/// A control's title, which looks disabled with it.
QLabel* titleLabel(const QString& title, QWidget* control = nullptr);

/// An explanation under controls.
QLabel* helpLabel(const char* text);

/// A thin line between rows.
QFrame* divider();

} // namespace shotweaver
