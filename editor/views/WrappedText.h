#pragma once

#include "editor/views/HeightCache.h"
#include "editor/views/Style.h"

#include <QLabel>
#include <QTextLayout>

namespace shotweaver {

/// Text in lines no wider than a width, broken between words, and within a word that is wider: a
/// camera's or a project's name may be anything.
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

/// The width of a text in one line, pixels.
int lineWidth(const QString& text, const QFont& font);

/// A label that shows all of its text, never taken for markup, however narrow it is.
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
