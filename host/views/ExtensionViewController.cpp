#include "host/views/ExtensionViewController.h"

#include "help/AboutTexts.h"
#include "help/HelpContent.h"
#include "host/SystemWorkspace.h"
#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionRootView.h"
#include "host/views/PanelSheets.h"
#include "host/views/ShotweaverHelpBundle.h"
#include "platform/Dates.h"
#include "platform/Locale.h"

#include <QEvent>
#include <QLocale>
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

} // namespace

ExtensionViewController::ExtensionViewController()
    : host_(systemWorkspace(systemEnvironment())),
      editor_({host_, systemFileCalls(), random_, secureUUIDs(), secondsSince2001Now,
               stateFolders(systemEnvironment()), panelLocale()}),
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
    new PanelSheets(
        editor_, view_,
        [] {
            return HelpContent(
                loadManual(systemFileCalls(), ShotweaverHelpBundle::path("ShotweaverHelp", "json")),
                panelLocale());
        },
        versionText(SHOTWEAVER_VERSION, SHOTWEAVER_BUILD));
    view_->installEventFilter(this);
    host_.setWindow(view_);
    return view_;
}

/// The editor restores its session when its panel is first seen.
bool ExtensionViewController::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) editor_.appear();
    return QObject::eventFilter(watched, event);
}

} // namespace shotweaver
