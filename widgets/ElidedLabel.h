#pragma once

#include "widgets/Style.h"

#include <QLabel>

#include <string>

namespace shotweaver {

/// A label of one line that is shortened in its middle where it does not fit: the ends of a name or
/// a path say which it is. Its tooltip and a screen reader tell it whole.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(style::TextStyle style, const QColor& colour = style::text());

    void show(const std::string& text);
    using QLabel::show;

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace shotweaver
