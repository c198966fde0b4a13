#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

class QHBoxLayout;

namespace shotweaver {

class Picker;
class Stepper;
class Toggle;

/// "Opening and closing shots". Object names: openingEnabled, openingCamera, openingSeconds, and
/// the same with closing.
class BookendsPanel : public QGroupBox {
    Q_OBJECT

  public:
    /// `editor` must outlive the panel.
    explicit BookendsPanel(ContentView& editor, QWidget* parent = nullptr);

    void refresh();

  private:
    /// The controls of one of the shots.
    struct Row {
        Toggle* enabled;
        Picker* camera;
        Stepper* seconds;
    };
    /// What they do.
    struct Operations {
        void (ContentView::*setEnabled)(bool);
        void (ContentView::*setCamera)(const std::string&);
        void (ContentView::*setSeconds)(double);
    };

    Row makeRow(const QString& prefix, const QString& title, const Operations& operations);
    static QHBoxLayout* layOut(const Row& row);
    static void show(const Row& row, bool isEnabled, const std::vector<PickerOption>& cameras,
                     const std::string& camera, double seconds);

    ContentView& editor_;
    Row opening_;
    Row closing_;
};

} // namespace shotweaver
