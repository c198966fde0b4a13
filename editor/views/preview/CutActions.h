#pragma once

#include "editor/ContentView.h"

#include <QKeyCombination>
#include <QObject>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class QAction;
class QItemSelectionModel;
class QMenu;
class QWidget;

namespace shotweaver {

/// What can be done with the selected cuts, by keys and a context menu that the cut list and its
/// overview share. K keeps and lets go, 1 to 9 choose a camera, Alt+Left and Alt+Right move the
/// start of the current cut by a frame, with Shift by ten.
class CutActions : public QObject {
    Q_OBJECT

  public:
    /// `editor` and `selection` must outlive the actions.
    CutActions(ContentView& editor, QItemSelectionModel& selection, QObject* parent);

    /// Gives a view the keys and the menu.
    void addTo(QWidget& view);

    /// Rows of the cut list, in order.
    std::vector<std::size_t> selectedRows() const;
    void shuffleSelection();

    /// The menu as it is now, for the current cut and the selection; the caller owns it.
    QMenu* makeMenu(QWidget* parent);

  private:
    void addKey(const QString& name, QKeyCombination key, std::function<void()> run);
    void addCameras(QMenu& menu, std::size_t row);
    void addRolls(QMenu& menu, std::size_t row);
    std::optional<std::size_t> currentRow() const;
    void toggleKept();
    void chooseCamera(std::size_t number);
    void setCamera(const std::string& camera);
    void roll(std::int64_t frames);
    void selectRow(std::size_t row);

    ContentView& editor_;
    QItemSelectionModel& selection_;
    std::vector<QAction*> keys_;
};

} // namespace shotweaver
