#include "host/views/PanelSheets.h"

#include "help/HelpTexts.h"
#include "help/views/ShotweaverAboutView.h"
#include "help/views/ShotweaverHelpView.h"
#include "help/views/ShotweaverHelpWindow.h"
#include "widgets/Sheet.h"
#include "widgets/Style.h"

#include <QDialog>
#include <QVBoxLayout>

#include <functional>

namespace shotweaver {

PanelSheets::PanelSheets(ContentView& editor, QWidget* window,
                         std::function<HelpContent()> loadHelp, std::string versionText)
    : QObject(window), editor_(editor), window_(window), loadHelp_(std::move(loadHelp)),
      versionText_(std::move(versionText)), subscription_(editor.observe([this] { refresh(); })) {}

void PanelSheets::refresh() {
    const EditorFields& fields = editor_.fields();
    follow(help_, fields.showingHelp, &PanelSheets::makeHelpSheet, &ContentView::setShowingHelp);
    follow(about_, fields.showingAbout, &PanelSheets::makeAboutSheet,
           &ContentView::setShowingAbout);
}

void PanelSheets::follow(QPointer<QDialog>& sheet, bool isWanted, QDialog* (PanelSheets::*make)(),
                         void (ContentView::*setShown)(bool)) {
    if (!isWanted) {
        if (sheet && sheet->isVisible()) sheet->close();
        return;
    }
    if (sheet) return;
    sheet = (this->*make)();
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    connect(sheet, &QDialog::finished, this, [this, &sheet, setShown] {
        sheet.clear(); // it goes later, and may be asked for again before
        std::invoke(setShown, editor_, false);
    });
    sheet->open();
}

QDialog* PanelSheets::makeHelpSheet() {
    auto* const sheet = new QDialog(window_);
    sheet->setWindowTitle(QString::fromUtf8(helpTexts::title));
    sheet->setObjectName(QStringLiteral("helpSheet"));
    makeSheet(*sheet);
    auto* const layout = new QVBoxLayout(sheet);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* const view = new ShotweaverHelpView(loadHelp_(), [sheet] { sheet->close(); });
    layout->addWidget(view);
    view->setFocus();
    return sheet;
}

QDialog* PanelSheets::makeAboutSheet() {
    return new ShotweaverAboutView(
        versionText_, [load = loadHelp_] { ShotweaverHelpWindow::show(load); }, window_);
}

} // namespace shotweaver
