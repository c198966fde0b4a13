#include "widgets/WarningLine.h"

#include "widgets/PanelLayout.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"
#include "widgets/WrappedText.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace shotweaver {

namespace {

/// A triangle with an exclamation mark.
class WarningSign : public QWidget {
  public:
    WarningSign() {
        const int side = style::scaled(16);
        setFixedSize(side, side);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const double side = width();
        painter.setPen(
            QPen(style::accent(), side / 10, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPolygon(QPolygonF{QPointF(0.5, 0.1) * side, QPointF(0.94, 0.88) * side,
                                      QPointF(0.06, 0.88) * side});
        painter.drawLine(QPointF(0.5, 0.38) * side, QPointF(0.5, 0.6) * side);
        painter.drawPoint(QPointF(0.5, 0.75) * side);
    }
};

} // namespace

WarningLine::WarningLine(const QString& name, QWidget* parent)
    : QWidget(parent), sign_(new WarningSign),
      text_(new WrappedLabel(style::TextStyle::body, style::accent())) {
    text_->setObjectName(name);
    text_->setAlignment(Qt::AlignTop);
    text_->setMinimumHeight(2 * text_->fontMetrics().lineSpacing());
    QHBoxLayout* const row = rowLayout(this);
    row->addWidget(sign_, 0, Qt::AlignTop);
    row->addWidget(text_, 1);
    show("");
}

void WarningLine::show(const std::string& text) {
    showText(*text_, text);
    sign_->setVisible(!text.empty());
}

} // namespace shotweaver
