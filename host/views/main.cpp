#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionViewController.h"
#include "host/views/ProgramResources.h"
#include "platform/FileURL.h"
#include "widgets/IconLabel.h"
#include "widgets/Style.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>

#include <exception>
#include <iostream>

namespace {

using namespace shotweaver;

/// Puts a project into the inbox as a host does: before the panel is seen.
void handInProject(const QString& path) {
    XMLInbox::shared().setURL(fileURL(QFileInfo(path).absoluteFilePath().toStdString()));
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

    style::apply(application);
    const ExtensionDescription description = extensionDescription();
    const auto controller = makeViewController(description.principalViewControllerClass);
    if (!controller) {
        std::cerr << "shotweaver-app: the description names no view controller: "
                  << description.principalViewControllerClass << '\n';
        return 1;
    }
    if (!parser.positionalArguments().isEmpty())
        handInProject(parser.positionalArguments().constFirst());
    QWidget* const view = controller->view();
    view->setWindowTitle(QStringLiteral("Shotweaver"));
    view->show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
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
