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

/// An empty row, or column, without margins. The caller adds it to a layout, which owns it.
QHBoxLayout* rowLayout(QWidget* parent = nullptr);
QVBoxLayout* columnLayout(QWidget* parent = nullptr);

/// A control's title, which looks disabled with it.
QLabel* titleLabel(const QString& title, QWidget* control = nullptr);

/// An explanation under controls.
QLabel* helpLabel(const char* text);

/// A thin line between rows.
QFrame* divider();

} // namespace shotweaver
