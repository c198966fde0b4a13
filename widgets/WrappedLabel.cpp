#include "widgets/WrappedLabel.h"

#include "widgets/WrappedText.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace shotweaver {

namespace {

// Points that a text of several lines would like to be wide. Whatever holds it may be wider, but
// is then never lower than it needs.
constexpr int comfortable = 380;

} // namespace

WrappedLabel::WrappedLabel(style::TextStyle style, const QColor& colour) {
    style::prepare(*this, style, colour);
    setWordWrap(true);
    setTextInteractionFlags(Qt::NoTextInteraction);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize WrappedLabel::sizeHint() const {
    if (isInteractive()) return QLabel::sizeHint();
    const int width = std::min(shotweaver::lineWidth(text(), font()), style::scaled(comfortable));
    return {width, heightForWidth(width)};
}

/// Small, also where Qt would have the height of the narrowest it can be: a page's height is that
/// of its width.
QSize WrappedLabel::minimumSizeHint() const {
    return {style::scaled(60), fontMetrics().height()};
}

int WrappedLabel::heightForWidth(int width) const {
    return heights_.height(text(), font(), width, [&] {
        if (isInteractive()) return QLabel::heightForWidth(width);
        return static_cast<int>(std::ceil(WrappedText(text(), font(), width).height()));
    });
}

void WrappedLabel::paintEvent(QPaintEvent* event) {
    if (isInteractive()) return QLabel::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const WrappedText lines(text(), font(), width(), alignment());
    const double spare = height() - lines.height();
    const bool isAtTop = (alignment() & Qt::AlignTop) || spare < 0;
    lines.draw(painter, {0, isAtTop ? 0 : std::floor(spare / 2)}, height());
}

} // namespace shotweaver
