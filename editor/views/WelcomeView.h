#pragma once

#include "editor/ContentView.h"

#include <QWidget>

namespace shotweaver {

/// What the panel shows before the first project: how to get one out of Final Cut Pro. Object
/// names: noProject, openExample.
class WelcomeView : public QWidget {
    Q_OBJECT

  public:
    /// `editor` must outlive the view.
    explicit WelcomeView(ContentView& editor, QWidget* parent = nullptr);
};

} // namespace shotweaver
