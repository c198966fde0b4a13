#include "help/views/ShotweaverAboutView.h"

#include "help/AboutTexts.h"
#include "help/views/LinkLabel.h"
#include "widgets/IconLabel.h"
#include "widgets/Sheet.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

QLabel* centredText(style::TextStyle textStyle, const std::string& text,
                    const QColor& colour = style::text()) {
    QLabel* const label = new WrappedLabel(textStyle, colour);
    label->setText(toQt(text));
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

} // namespace

ShotweaverAboutView::ShotweaverAboutView(const std::string& versionText,
                                         std::function<void()> openManual, QWidget* parent)
    : QDialog(parent) {
    constexpr int iconSide = 112;
    constexpr int width = 440;
    setObjectName(QStringLiteral("aboutSheet"));
    setWindowTitle(QStringLiteral("About Shotweaver"));
    setFixedWidth(style::scaled(width));
    makeSheet(*this);

    auto* const manual = new QPushButton(QString::fromUtf8(aboutTexts::openManual));
    manual->setObjectName(QStringLiteral("openManual"));
    connect(manual, &QPushButton::clicked, this, [this, openManual = std::move(openManual)] {
        reject();
        QTimer::singleShot(0, QCoreApplication::instance(), openManual);
    });
    auto* const close = new QPushButton(QString::fromUtf8(aboutTexts::close));
    close->setObjectName(QStringLiteral("closeAbout"));
    close->setDefault(true);
    connect(close, &QPushButton::clicked, this, &QDialog::reject);
    auto* const buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(manual);
    buttons->addWidget(close);
    buttons->addStretch();

    QLabel* const link = makeLink(aboutTexts::website, productPage, style::TextStyle::headline);
    link->setAlignment(Qt::AlignHCenter);
    auto* const column = new QVBoxLayout(this);
    const int margin = style::scaled(24);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(style::scaled(style::normal));
    column->addWidget(new IconLabel(iconSide), 0, Qt::AlignHCenter);
    column->addWidget(centredText(style::TextStyle::largeTitle, aboutTexts::productName));
    column->addWidget(centredText(style::TextStyle::caption, versionText, style::secondary()));
    column->addWidget(centredText(style::TextStyle::body, aboutTexts::purpose));
    column->addWidget(link);
    column->addWidget(centredText(style::TextStyle::callout, aboutTexts::invitation));
    column->addWidget(
        centredText(style::TextStyle::caption, aboutTexts::contributions, style::secondary()));
    column->addLayout(buttons);
}

} // namespace shotweaver
