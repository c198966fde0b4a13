#include "editor/views/settings/CoverageBarView.h"

#include "widgets/Accessibility.h"
#include "widgets/PlainToolTip.h"
#include "widgets/Style.h"
#include "widgets/WrappedText.h"

#include <QAccessibleWidget>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace shotweaver {

namespace {

class AccessibleCoverageBar : public QAccessibleWidget {
  public:
    explicit AccessibleCoverageBar(CoverageBarView* view)
        : QAccessibleWidget(view, QAccessible::Chart), view_(view) {}

    QString text(QAccessible::Text which) const override {
        if (which == QAccessible::Name) return toQt(view_->bar().label);
        // The value reaches screen readers on some systems only.
        if (which == QAccessible::Value || which == QAccessible::Description)
            return toQt(view_->rangesText());
        return QAccessibleWidget::text(which);
    }

  private:
    CoverageBarView* view_;
};

QColor colourOf(CoverageBar::Colour colour) {
    switch (colour) {
    case CoverageBar::Colour::used:
        return style::accent();
    case CoverageBar::Colour::unused:
        return style::unused();
    case CoverageBar::Colour::audio:
        return style::audio();
    case CoverageBar::Colour::gap:
        break;
    }
    return style::gap();
}

} // namespace

CoverageBarView::CoverageBarView(QWidget* parent) : QWidget(parent) {
    installAccessible<CoverageBarView, AccessibleCoverageBar>();
    setFixedHeight(style::scaled(style::normal));
    setMinimumWidth(style::scaled(100));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CoverageBarView::show(const CoverageBar& bar, const std::shared_ptr<const Project>& project) {
    if (bar == bar_ && project == project_) return;
    bar_ = bar;
    project_ = project;
    update();
}

std::string CoverageBarView::rangesText() const {
    return project_ ? accessibleRanges(bar_.ranges, project_->engine) : "";
}

std::optional<std::string> CoverageBarView::textAt(double x) const {
    if (!project_) return std::nullopt;
    const auto range = rangeAt(axis(), bar_.ranges, x);
    if (!range) return std::nullopt;
    return bar_.colour == CoverageBar::Colour::gap
               ? gapText(bar_.ranges[*range], *project_)
               : rangeText(bar_.ranges[*range], project_->engine);
}

BarAxis CoverageBarView::axis() const {
    BarAxis axis;
    // One point is left for a range at the very end.
    axis.area = QRectF(rect()).adjusted(0, 0, -axis.point, 0);
    if (project_) axis.length = project_->engine.length;
    return axis;
}

bool CoverageBarView::event(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const auto text = textAt(help->pos().x() + 0.5);
    // Only for this pixel column: the next one may show another range.
    const QRect area(help->pos().x(), 0, 1, height());
    QToolTip::showText(help->globalPos(), plainToolTip(text.value_or("")), this, area);
    return true;
}

void CoverageBarView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    drawBarBackground(painter, axis());
    drawBarRanges(painter, axis(), bar_.ranges, colourOf(bar_.colour));
}

} // namespace shotweaver
