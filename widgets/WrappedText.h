#pragma once

#include <QFont>
#include <QString>
#include <QTextLayout>

class QLabel;

namespace shotweaver {

/// The beginning of a text, and "…" for the rest, when it is longer than any that is read: finding
/// line breaks in one long word takes a time that grows with the square of its length.
QString shortened(const QString& text);

/// Text in lines no wider than a width, broken between words, and within a word that is wider: a
/// camera's or a project's name may be anything. A long text is shortened.
class WrappedText {
  public:
    /// `width` in pixels; of the alignment, its horizontal part.
    WrappedText(const QString& text, const QFont& font, double width,
                Qt::Alignment alignment = Qt::AlignLeft);

    double height() const { return height_; }
    double lineHeight() const;
    /// Of what is higher than `room`, the lines that fit, with "…" at their end; the first in any
    /// case.
    void draw(QPainter& painter, const QPointF& topLeft, double room) const;

  private:
    QTextLayout layout_;
    double height_ = 0;
};

/// The width of a text, shortened, in one line, pixels.
int lineWidth(const QString& text, const QFont& font);

/// Shows a text, shortened, unless it is the one on show.
void showText(QLabel& label, const std::string& text);

} // namespace shotweaver
