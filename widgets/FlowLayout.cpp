#include "widgets/FlowLayout.h"

#include <algorithm>

namespace shotweaver {

namespace {

void place(const QList<QLayoutItem*>& row, QPoint at, int height, int spacing) {
    for (QLayoutItem* const item : row) {
        const QSize size = item->sizeHint();
        item->setGeometry({at + QPoint(0, (height - size.height()) / 2), size});
        at.rx() += size.width() + spacing;
    }
}

} // namespace

FlowLayout::FlowLayout(QWidget* parent, int spacing) : QLayout(parent) {
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
}

FlowLayout::~FlowLayout() {
    qDeleteAll(items_);
}

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < count() ? items_.takeAt(index) : nullptr;
}

int FlowLayout::heightForWidth(int width) const {
    return layOut({0, 0, width, 0}, Placing::measured);
}

QSize FlowLayout::minimumSize() const {
    QSize size;
    for (const QLayoutItem* const item : items_)
        if (!item->isEmpty()) size = size.expandedTo(item->sizeHint());
    return size;
}

/// All in one row.
QSize FlowLayout::sizeHint() const {
    QSize size(-spacing(), 0);
    for (const QLayoutItem* const item : items_) {
        if (item->isEmpty()) continue;
        const QSize each = item->sizeHint();
        size = {size.width() + spacing() + each.width(), std::max(size.height(), each.height())};
    }
    return size.expandedTo({0, 0});
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    layOut(rect, Placing::done);
}

int FlowLayout::layOut(const QRect& rect, Placing placing) const {
    QList<QLayoutItem*> row;
    int top = rect.top();
    int width = 0;
    int height = 0;
    const auto endRow = [&] {
        if (placing == Placing::done) place(row, {rect.left(), top}, height, spacing());
        top += height;
        row.clear();
        width = height = 0;
    };
    for (QLayoutItem* const item : items_) {
        if (item->isEmpty()) continue;
        const QSize size = item->sizeHint();
        if (!row.isEmpty() && width + spacing() + size.width() > rect.width()) {
            endRow();
            top += spacing();
        }
        width += (row.isEmpty() ? 0 : spacing()) + size.width();
        height = std::max(height, size.height());
        row.append(item);
    }
    endRow();
    return top - rect.top();
}

} // namespace shotweaver
