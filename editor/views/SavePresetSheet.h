#pragma once

#include "editor/ContentView.h"

#include <QDialog>

class QLayout;
class QPushButton;

namespace shotweaver {

class TextField;

/// The sheet that names a new preset. Return saves; Escape and closing cancel. Object names:
/// savePresetSheet, presetName, cancelSavePreset, confirmSavePreset.
class SavePresetSheet : public QDialog {
    Q_OBJECT

  public:
    /// `editor` must outlive the sheet.
    SavePresetSheet(ContentView& editor, QWidget* parent);

    /// Opens or closes it as the editor says.
    void refresh();
    void reject() override;

  private:
    QLayout* makeButtons();

    ContentView& editor_;
    TextField* name_;
    QPushButton* save_ = nullptr;
};

} // namespace shotweaver
