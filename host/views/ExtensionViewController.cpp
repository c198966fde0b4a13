#include "host/views/ExtensionViewController.h"

#include "help/AboutTexts.h"
#include "help/HelpContent.h"
#include "host/SystemWorkspace.h"
#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionRootView.h"
#include "host/views/PanelSheets.h"
#include "host/views/ShotweaverHelpBundle.h"
#include "host/views/WindowMemory.h"
#include "platform/Dates.h"
#include "platform/Files.h"
#include "platform/Locale.h"
#include "platform/UserDefaults.h"
#include "widgets/Style.h"

#include <QEvent>
#include <QLocale>
#include <QShortcut>
#include <QSplitter>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

constexpr QSize preferredSize(960, 860);

/// The environment's locale. A program that a Mac's desktop starts has none there.
std::string panelLocale() {
#if defined(Q_OS_MACOS)
    if (qEnvironmentVariableIsEmpty("LANG") && qEnvironmentVariableIsEmpty("LC_ALL"))
        return QLocale::system().bcp47Name().toStdString();
#endif
    return userLocale();
}

/// Empty where the program was installed without it.
std::string exampleProject() {
    const std::string path = ShotweaverHelpBundle::path("Example", "fcpxml");
    return fileExists(systemFileCalls(), path) ? path : "";
}

} // namespace

ExtensionViewController::ExtensionViewController()
    : host_(systemWorkspace(systemEnvironment()),
            UserDefaults(systemFileCalls(), stateFolders(systemEnvironment()).userDefaults)),
      editor_({host_, systemFileCalls(), random_, secureUUIDs(), secondsSince2001Now,
               stateFolders(systemEnvironment()), panelLocale(), exampleProject()}),
      inbox_(XMLInbox::shared(), editor_) {}

ExtensionViewController::~ExtensionViewController() {
    delete view_;
}

QWidget* ExtensionViewController::view() {
    if (view_) return view_;
    view_ = new ExtensionDropContainer(XMLInbox::shared());
    view_->resize(preferredSize);
    auto* const layout = new QVBoxLayout(view_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new ExtensionRootView(editor_));
    connect(view_, &ExtensionDropContainer::targeted, this,
            [this](bool isTargeted) { editor_.setDropTargeted(isTargeted); });
    new PanelSheets(
        editor_, view_,
        [] {
            return HelpContent(
                loadManual(systemFileCalls(), ShotweaverHelpBundle::path("ShotweaverHelp", "json")),
                panelLocale());
        },
        versionText(SHOTWEAVER_VERSION, SHOTWEAVER_BUILD));
    const UserDefaults defaults(systemFileCalls(), stateFolders(systemEnvironment()).userDefaults);
    new WindowMemory(defaults, view_, view_->findChild<QSplitter*>(QStringLiteral("columns")));
    for (const auto key : {Qt::Key_W, Qt::Key_Q})
        connect(new QShortcut(QKeySequence(Qt::CTRL | key), view_), &QShortcut::activated, view_,
                &QWidget::close);
    subscription_ = editor_.observe([this] { showTitle(); });
    showTitle();
    view_->installEventFilter(this);
    host_.setWindow(view_);
    return view_;
}

/// The project's name, in one line.
void ExtensionViewController::showTitle() {
    const Project* const project = editor_.project();
    const QString name = project ? toQt(project->summary.name).simplified() : QString();
    const QString title = name.isEmpty() ? QString::fromUtf8(aboutTexts::productName) : name;
    if (view_ && view_->windowTitle() != title) view_->setWindowTitle(title);
}

/// The editor restores its session when its panel is first seen.
bool ExtensionViewController::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) editor_.appear();
    return QObject::eventFilter(watched, event);
}

} // namespace shotweaver
