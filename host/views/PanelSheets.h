#pragma once

#include "editor/ContentView.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <string>

class QDialog;
class QWidget;

namespace shotweaver {

class HelpContent;

/// Shows the help and the about sheet over the panel while the editor's flags say so.
class PanelSheets : public QObject {
    Q_OBJECT

  public:
    /// `editor` must outlive the sheets. `loadHelp` gives the manual afresh for each help sheet.
    PanelSheets(ContentView& editor, QWidget* window, std::function<HelpContent()> loadHelp,
                std::string versionText);

  private:
    void refresh();
    QDialog* makeHelpSheet();
    QDialog* makeAboutSheet();
    void follow(QPointer<QDialog>& sheet, bool isWanted, QDialog* (PanelSheets::*make)(),
                void (ContentView::*setShown)(bool));

    ContentView& editor_;
    QWidget* window_;
    std::function<HelpContent()> loadHelp_;
    std::string versionText_;
    QPointer<QDialog> help_;
    QPointer<QDialog> about_;
    Observers::Subscription subscription_;
};

} // namespace shotweaver
