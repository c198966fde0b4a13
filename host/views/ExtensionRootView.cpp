#include "host/views/ExtensionRootView.h"

#include "editor/views/EditorPanel.h"
#include "widgets/Style.h"

namespace shotweaver {

namespace {

// The panel is squeezed no further; points at the standard text size.
constexpr QSize smallestPanel(800, 860);

} // namespace

ExtensionRootView::ExtensionRootView(ContentView& editor, QWidget* parent) : QScrollArea(parent) {
    setObjectName(QStringLiteral("rootView"));
    auto* const panel = new EditorPanel(editor, viewport());
    panel->setMinimumSize(style::scaled(smallestPanel.width()),
                          style::scaled(smallestPanel.height()));
    setWidget(panel);
    setWidgetResizable(true);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    setFocusPolicy(Qt::NoFocus);
}

} // namespace shotweaver
