#pragma once

#include "widgets/HeightCache.h"

#include <QCheckBox>

#include <string>

namespace shotweaver {

/// A check box whose label wraps.
class Toggle : public QCheckBox {
    Q_OBJECT

  public:
    explicit Toggle(const QString& label = {}, QWidget* parent = nullptr);

    void show(bool isOn);
    void showLabel(const std::string& label);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

  Q_SIGNALS:
    void switched(bool isOn);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    void setLabel(const QString& label);
    int indent() const;

    QString label_;
    mutable HeightCache heights_;
};

} // namespace shotweaver
