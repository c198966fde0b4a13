#pragma once

class QPainter;
class QRect;
class QWidget;

namespace shotweaver {

/// The room that a focus outline needs around a control, points.
int focusMargin();

/// Draws the outline around a part of a control while it has the focus.
void drawFocus(QPainter& painter, const QWidget& widget, const QRect& part);

} // namespace shotweaver
