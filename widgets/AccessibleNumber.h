#pragma once

#include "widgets/Accessibility.h"

#include <QAccessibleWidget>

namespace shotweaver {

/// A control over numbers as a screen reader meets it.
template <class Control, QAccessible::Role kind>
class AccessibleNumber : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit AccessibleNumber(Control* control)
        : QAccessibleWidget(control, kind), control_(control) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text which) const override {
        if (which == QAccessible::Value) return QString::number(control_->number());
        return QAccessibleWidget::text(which);
    }
    // Its label and buttons are parts of it, not controls of their own.
    int childCount() const override { return 0; }

    QVariant currentValue() const override { return control_->number(); }
    void setCurrentValue(const QVariant& value) override { control_->moveTo(value.toDouble()); }
    QVariant maximumValue() const override { return control_->controlRange().maximum; }
    QVariant minimumValue() const override { return control_->controlRange().minimum; }
    QVariant minimumStepSize() const override { return control_->controlRange().step; }

  private:
    Control* control_;
};

} // namespace shotweaver
