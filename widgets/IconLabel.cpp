#include "widgets/IconLabel.h"

#include "widgets/Accessibility.h"
#include "widgets/Style.h"

#include <QAccessibleWidget>
#include <QIcon>
#include <QPixmap>

#include <algorithm>
#include <array>

namespace shotweaver {

namespace {

// Of the pictures of the icon, pixels.
constexpr std::array<int, 9> pictureSides{16, 32, 48, 64, 112, 128, 224, 256, 512};

QString pictureOfIcon(int side) {
    return QStringLiteral(":/icons/ShotweaverIcon-%1.png").arg(side);
}

class AccessibleIcon : public QAccessibleWidget {
  public:
    explicit AccessibleIcon(IconLabel* label) : QAccessibleWidget(label, QAccessible::Graphic) {}

    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.invisible = true;
        return state;
    }
};

} // namespace

IconLabel::IconLabel(int points) {
    installAccessible<IconLabel, AccessibleIcon>();
    const int side = style::scaled(points);
    const double ratio = devicePixelRatioF();
    const int wanted = static_cast<int>(side * ratio);
    // Only the picture that is shown is read; the largest takes longer than all the rest.
    const auto* const nearest = std::find_if(pictureSides.begin(), pictureSides.end() - 1,
                                             [&](int each) { return each >= wanted; });
    QPixmap picture = QPixmap(pictureOfIcon(*nearest))
                          .scaled(wanted, wanted, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    picture.setDevicePixelRatio(ratio);
    setPixmap(picture);
    setFixedSize(side, side);
}

QIcon applicationIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 64, 128, 256})
        icon.addFile(pictureOfIcon(side));
    return icon;
}

} // namespace shotweaver
