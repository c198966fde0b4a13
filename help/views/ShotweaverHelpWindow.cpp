#include "help/views/ShotweaverHelpWindow.h"

#include "help/HelpTexts.h"
#include "help/views/ShotweaverHelpView.h"
#include "widgets/Style.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>

namespace shotweaver {

void ShotweaverHelpWindow::show(const std::function<HelpContent()>& load) {
    // Kept for the life of the process; the application's end deletes nothing that is a window.
    static QPointer<ShotweaverHelpView> window;
    if (!window) {
        window = new ShotweaverHelpView(load(), [] { window->close(); });
        window->setWindowTitle(QString::fromUtf8(helpTexts::title));
        window->setObjectName(QStringLiteral("helpWindow"));
        window->setAttribute(Qt::WA_QuitOnClose, false);
        window->resize(window->sizeHint());
        if (const QScreen* const screen = QGuiApplication::primaryScreen())
            window->move(screen->availableGeometry().center() - window->rect().center());
    }
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

} // namespace shotweaver
