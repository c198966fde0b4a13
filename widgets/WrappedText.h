#pragma once

#include "widgets/HeightCache.h"
#include "widgets/Style.h"

#include <QLabel>
#include <QTextLayout>

namespace shotweaver {

/// The beginning of a text, and "…" for the rest, when it is longer than any that is read: finding
/// line breaks in one long word takes a time that grows with the square of its length.
QString shortened(const QString& text);

/// Text in lines no wider than a width, broken between words, and within a word that is wider: a
/// camera's or a project's name may be anything. A long text is shortened.
class WrappedText {
  public:
    /// `width` in pixels.
    WrappedText(const QString& text, const QFont& font, double width);

    double height() const { return height_; }
    double lineHeight() const;
    void draw(QPainter& painter, const QPointF& topLeft) const { layout_.draw(&painter, topLeft); }

  private:
    QTextLayout layout_;
    double height_ = 0;
};

/// The width of a text, shortened, in one line, pixels.
int lineWidth(const QString& text, const QFont& font);

/// A label that breaks its text into as many lines as it takes, never takes it for markup, and
/// shortens it only to show it.
class WrappedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit WrappedLabel(style::TextStyle style, const QColor& colour = style::text());

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    mutable HeightCache heights_;
};

} // namespace shotweaver
