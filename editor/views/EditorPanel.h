#pragma once

#include "editor/ContentView.h"

#include <QWidget>

#include <memory>

class QMessageBox;
class QScrollArea;
class QSplitter;

namespace shotweaver {

class FindingsView;
class PreviewColumn;
class SavePresetSheet;
class SettingsColumn;
class StatusView;
class WelcomeView;

/// The editor's panel: header, toolbar, the settings and the preview column, the status lines; the
/// alert and the sheets over it. Files may be dropped anywhere on it, also over its text fields.
class EditorPanel : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit EditorPanel(ContentView& editor, QWidget* parent = nullptr);
    ~EditorPanel() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    QWidget* makeHeader();
    QWidget* makeToolbar();
    QWidget* makeColumns();
    void makeSettingsArea();
    void watchDrops(QObject* object);
    bool handleDragEvent(QEvent* event);
    void refresh();
    void refreshAlert();

    ContentView& editor_;
    WelcomeView* welcome_ = nullptr;
    FindingsView* findings_ = nullptr;
    QSplitter* columns_ = nullptr;
    QScrollArea* settingsArea_ = nullptr;
    SettingsColumn* settings_ = nullptr;
    PreviewColumn* preview_ = nullptr;
    StatusView* status_ = nullptr;
    QWidget* dropHighlight_ = nullptr;
    SavePresetSheet* savePreset_ = nullptr;
    QMessageBox* alert_ = nullptr;
    std::shared_ptr<const Project> project_; // on show
    bool wasShown_ = false;
    Observers::Subscription subscription_;
};

} // namespace shotweaver
