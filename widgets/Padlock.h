#pragma once

class QColor;
class QIcon;
class QPainter;
class QRectF;

namespace shotweaver {

/// Draws a closed padlock into the middle of a rectangle, as high as it.
void drawPadlock(QPainter& painter, const QRectF& rect, const QColor& colour);

/// The same for buttons and tables, in the text's colour.
QIcon padlockIcon();

} // namespace shotweaver
