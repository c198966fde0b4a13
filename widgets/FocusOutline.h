#pragma once

class QPainter;
class QWidget;

namespace shotweaver {

/// The room that a focus outline needs around a control, points.
int focusMargin();

/// Draws the outline along a control's edge while it has the focus.
void drawFocus(QPainter& painter, const QWidget& widget);

} // namespace shotweaver
