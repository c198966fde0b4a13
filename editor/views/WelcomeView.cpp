#include "editor/views/WelcomeView.h"

#include "editor/PanelTexts.h"
#include "widgets/ButtonAction.h"
#include "widgets/PanelLayout.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"

#include <QGridLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

QWidget* makeSteps() {
    auto* const steps = new QWidget;
    auto* const grid = new QGridLayout(steps);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(style::scaled(style::close));
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const char* const step : panelTexts::firstSteps) {
        QLabel* const number = style::label(style::TextStyle::headline, style::accent());
        number->setText(QString::number(row + 1));
        QLabel* const text = new WrappedLabel(style::TextStyle::body);
        text->setText(QString::fromUtf8(step));
        grid->addWidget(number, row, 0, Qt::AlignTop);
        grid->addWidget(text, row, 1);
        ++row;
    }
    return steps;
}

} // namespace

WelcomeView::WelcomeView(ContentView& editor, QWidget* parent) : QWidget(parent) {
    QLabel* const invitation = new WrappedLabel(style::TextStyle::headline);
    invitation->setText(QString::fromUtf8(panelTexts::noProject));
    invitation->setObjectName(QStringLiteral("noProject"));
    QPushButton* const example = makeActionButton({QStringLiteral("openExample"),
                                                   QStringLiteral("Open the example"),
                                                   QString::fromUtf8(panelTexts::exampleTip),
                                                   {}},
                                                  this, [&editor] { editor.openExample(); });
    example->setVisible(editor.hasExample());

    auto* const column = new QWidget;
    column->setMaximumWidth(style::scaled(520));
    QVBoxLayout* const texts = columnLayout(column);
    texts->setSpacing(style::scaled(style::wide));
    texts->addWidget(invitation);
    texts->addWidget(makeSteps());
    texts->addWidget(example, 0, Qt::AlignLeft);
    auto* const layout = new QGridLayout(this);
    layout->setRowStretch(0, 1);
    layout->addWidget(column, 1, 1);
    layout->setColumnStretch(0, 1);
    layout->setColumnStretch(1, 4);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(2, 2);
}

} // namespace shotweaver
