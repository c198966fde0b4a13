#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

class QLabel;
class QLayout;
class QPushButton;

namespace shotweaver {

class Picker;

/// "Saved presets". The sheet that names a new one is `SavePresetSheet`. Object names: preset,
/// applyPreset, updatePreset, deletePreset, savePreset, presetNotice.
class PresetsPanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit PresetsPanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    QPushButton* makeButton(const QString& title, const QString& name,
                            void (ContentView::*operation)());
    QLayout* makeButtons();

    ContentView& editor_;
    Picker* preset_;
    QPushButton* apply_;
    QPushButton* update_;
    QPushButton* delete_;
    QPushButton* save_;
    QLabel* notice_;
};

} // namespace shotweaver
