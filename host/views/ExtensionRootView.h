#pragma once

#include "editor/ContentView.h"

#include <QScrollArea>

namespace shotweaver {

/// Scrolls the editor's panel where there is less room than it needs.
class ExtensionRootView : public QScrollArea {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit ExtensionRootView(ContentView& editor, QWidget* parent = nullptr);
};

} // namespace shotweaver
