#include "host/views/ExtensionRootView.h"

#include "editor/views/EditorPanel.h"

namespace shotweaver {

namespace {

// The panel is squeezed no further.
constexpr QSize smallestPanel(800, 860);

} // namespace

ExtensionRootView::ExtensionRootView(ContentView& editor, QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("rootView"));
    auto* const panel = new EditorPanel(editor);
    panel->setMinimumSize(smallestPanel);
    setWidget(panel);
    setWidgetResizable(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setFocusPolicy(Qt::NoFocus);
}

} // namespace shotweaver
