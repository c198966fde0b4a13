#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionViewController.h"
#include "host/views/OpenedFiles.h"
#include "host/views/PanelInstance.h"
#if defined(Q_OS_MACOS)
#include "host/views/MacDrags.h"
#endif
#include "platform/StateFolders.h"
#include "widgets/IconLabel.h"
#include "widgets/Style.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>

#include <algorithm>
#include <exception>
#include <iostream>
#include <string_view>

namespace {

using namespace shotweaver;

/// Qt ends a program that finds no display with an abort. A platform or a display that is named is
/// for Qt to judge.
bool lacksDisplay([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#if defined(Q_OS_LINUX)
    const bool isNamed = std::any_of(argv, argv + argc, [](std::string_view argument) {
        if (argument.starts_with("--")) argument.remove_prefix(1);
        return argument == "-platform" || argument == "-display";
    });
    return !isNamed && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") &&
           qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
#else
    return false;
#endif
}

int run(QApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Makes a rough edit of a multicam recording."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("PROJECT"),
                                 QStringLiteral("A .fcpxml file or .fcpxmld bundle. Without it the "
                                                "last session is restored."),
                                 QStringLiteral("[PROJECT]"));
    parser.process(application);

    const QString file = parser.positionalArguments().value(0);
    PanelInstance instance(QString::fromStdString(stateFolders(systemEnvironment()).session));
    if (instance.handOver(file.isEmpty() ? file : QFileInfo(file).absoluteFilePath())) return 0;

    style::apply(application);
    ExtensionViewController controller;
    // Before the panel is seen, as a host does.
    OpenedFiles opened(application, XMLInbox::shared());
    if (!file.isEmpty()) opened.open(file);
#if defined(Q_OS_MACOS)
    takeFinalCutDrags();
#endif
    QWidget* const view = controller.view();
    view->show();
    QObject::connect(&instance, &PanelInstance::handedOver, view,
                     [view, &opened](const QString& other) {
                         view->setWindowState(view->windowState() & ~Qt::WindowMinimized);
                         view->raise();
                         view->activateWindow();
                         if (!other.isEmpty()) opened.open(other);
                     });
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    if (lacksDisplay(argc, argv)) {
        std::cerr << "shotweaver-app: There is no display: neither DISPLAY nor WAYLAND_DISPLAY is "
                     "set. Start the panel from a desktop.\n";
        return 1;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("shotweaver-app"));
    QApplication::setApplicationVersion(QStringLiteral(SHOTWEAVER_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("shotweaver"));
    QApplication::setWindowIcon(applicationIcon());
    try {
        return run(application);
    } catch (const std::exception& failure) {
        std::cerr << "shotweaver-app: " << failure.what() << '\n';
        return 1;
    }
}
