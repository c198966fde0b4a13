#pragma once

#include "editor/ContentView.h"

#include <QWidget>

class QLabel;
class QMessageBox;
class QPushButton;
class QSplitter;

namespace shotweaver {

class FindingsView;
class PreviewColumn;
class SavePresetSheet;
class SettingsColumn;

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
    QWidget* makeFooter();
    void watchDrops(QObject* object);
    bool handleDragEvent(QEvent* event);
    void refresh();
    void refreshAlert();

    ContentView& editor_;
    QLabel* noProject_ = nullptr;
    FindingsView* findings_ = nullptr;
    QSplitter* columns_ = nullptr;
    SettingsColumn* settings_ = nullptr;
    PreviewColumn* preview_ = nullptr;
    QLabel* status_ = nullptr;
    QLabel* saveError_ = nullptr;
    QWidget* dropHighlight_ = nullptr;
    SavePresetSheet* savePreset_ = nullptr;
    QMessageBox* alert_ = nullptr;
    Observers::Subscription subscription_;
};

} // namespace shotweaver
