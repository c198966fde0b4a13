#pragma once

#include "widgets/HeightCache.h"
#include "widgets/Style.h"

#include <QLabel>

namespace shotweaver {

/// A label that breaks its text into as many lines as it takes, within a word where the word alone
/// is wider. It never takes its text for markup, and shortens it only to show it. Where a text is
/// made to be selected or followed (see QLabel's interaction flags), Qt lays it out.
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
    bool isInteractive() const { return textInteractionFlags() != Qt::NoTextInteraction; }

    mutable HeightCache heights_;
};

} // namespace shotweaver
