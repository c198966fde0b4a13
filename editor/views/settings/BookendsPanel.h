#pragma once

#include "editor/ContentView.h"

#include <QGroupBox>

class QLayout;

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

    Row makeRow(const QString& prefix, const QString& title, Bookend EditSettings::*shot);
    static QLayout* layOut(const Row& row);
    static void show(const Row& row, const Bookend& shot, const std::vector<PickerOption>& cameras);

    ContentView& editor_;
    Row opening_;
    Row closing_;
};

} // namespace shotweaver
