#pragma once

#include <QWidget>

namespace shotweaver {

/// The dashed outline over a panel while a file is dragged over it. Takes no events.
class DropHighlight : public QWidget {
    Q_OBJECT

  public:
    explicit DropHighlight(QWidget* parent);

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace shotweaver
