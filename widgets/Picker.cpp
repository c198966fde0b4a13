#include "widgets/Picker.h"
#include "widgets/WrappedText.h"

#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QSignalBlocker>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QWheelEvent>

#include <algorithm>

namespace shotweaver {

Picker::Picker(const QString& accessibleName, QWidget* parent) : QComboBox(parent) {
    setAccessibleName(accessibleName);
    setFocusPolicy(Qt::StrongFocus); // which the wheel does not give
    view()->setTextElideMode(Qt::ElideMiddle);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(3);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(this, &QComboBox::activated, this, [this](int index) {
        const std::string id = entries_.at(static_cast<std::size_t>(index)).id;
        Q_EMIT chosen(id);
    });
}

void Picker::showEntries(std::vector<Entry> entries, const std::string& current) {
    const QSignalBlocker blocker(this);
    if (entries != entries_) {
        entries_ = std::move(entries);
        // Filled before it is attached: the list starts a timer for each inserted row.
        auto* const items = new QStandardItemModel(this);
        for (const Entry& entry : entries_) {
            auto* const item = new QStandardItem(shortened(toQt(entry.label)));
            item->setToolTip(plainToolTip(entry.label));
            items->appendRow(item);
        }
        setModel(items); // deletes the one before
    }
    const auto found = std::find_if(entries_.begin(), entries_.end(),
                                    [&](const Entry& each) { return each.id == current; });
    setCurrentIndex(found == entries_.end() ? -1 : static_cast<int>(found - entries_.begin()));
    setToolTip(plainToolTip(currentText().toStdString()));
}

/// The list may be wider than the picker, to show names whole.
void Picker::showPopup() {
    const int whole = view()->sizeHintForColumn(0) + style::scaled(style::wide);
    view()->setMinimumWidth(std::min(whole, style::scaled(480)));
    QComboBox::showPopup();
}

void Picker::initStyleOption(QStyleOptionComboBox* option) const {
    QComboBox::initStyleOption(option);
    const QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, option, QStyle::SC_ComboBoxEditField, this);
    option->currentText =
        option->fontMetrics.elidedText(option->currentText, Qt::ElideMiddle, room.width() - 2);
}

void Picker::paintEvent(QPaintEvent* event) {
    QComboBox::paintEvent(event);
    // The style sheet leaves the arrow out.
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double half = style::scaled(4);
    const QPointF tip(width() - 3 * half, height() / 2.0 + half / 2);
    painter.setPen(QPen(isEnabled() ? style::secondary() : style::line(), half * 0.4));
    painter.drawPolyline(QPolygonF{tip + QPointF(-half, -half), tip, tip + QPointF(half, -half)});
}

void Picker::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace shotweaver
