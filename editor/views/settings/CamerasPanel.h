#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

#include <vector>

class QLabel;
class QVBoxLayout;

namespace shotweaver {

class CameraRowView;
class Picker;
class Stepper;
class Toggle;

/// "Cameras and audio": the main camera, the audio, and a row for each additional camera.
/// Object names: mainCamera, audio, mainWait, varyOthers.
class CamerasPanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit CamerasPanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    void bind();
    bool hasRowsOf(const std::vector<CameraRow>& rows) const;
    void rebuildRows(const std::vector<CameraRow>& rows);
    CameraRowView* takeRow(const std::string& id);

    ContentView& editor_;
    Picker* mainCamera_;
    Picker* audio_;
    Stepper* mainWait_;
    QWidget* rowPlace_;
    QVBoxLayout* rowLayout_;
    Toggle* varyOthers_;
    QLabel* varyHelp_;
    std::vector<CameraRowView*> rows_;
};

} // namespace shotweaver
