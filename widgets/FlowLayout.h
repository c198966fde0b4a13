#pragma once

#include <QLayout>
#include <QList>

namespace shotweaver {

/// Lays widgets in rows from the left, each row as high as its highest one; what does not fit goes
/// into the next row. Those in a row stand in its middle.
class FlowLayout : public QLayout {
    Q_OBJECT

  public:
    /// `spacing` is kept between widgets and between rows, pixels.
    FlowLayout(QWidget* parent, int spacing);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override { items_.append(item); }
    int count() const override { return static_cast<int>(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    QSize minimumSize() const override;
    QSize sizeHint() const override;
    void setGeometry(const QRect& rect) override;

  private:
    enum class Placing { measured, done };

    /// Gives the height of all rows.
    int layOut(const QRect& rect, Placing placing) const;

    QList<QLayoutItem*> items_;
};

} // namespace shotweaver
