#include "host/views/ExtensionViewController.h"

#include "help/AboutTexts.h"
#include "help/ManualSearch.h"
#include "host/SystemWorkspace.h"
#include "host/views/ExtensionDropContainer.h"
#include "host/views/ExtensionRootView.h"
#include "host/views/PanelSheets.h"
#include "host/views/ProgramResources.h"
#include "platform/Dates.h"
#include "platform/Locale.h"

#include <QEvent>
#include <QVBoxLayout>

#include <functional>
#include <map>

namespace shotweaver {

namespace {

constexpr QSize preferredSize(960, 860);

using Maker = std::function<std::unique_ptr<ExtensionViewController>()>;

const std::map<std::string, Maker>& registeredControllers() {
    static const std::map<std::string, Maker> controllers{
        {ExtensionViewController::registeredName,
         [] { return std::make_unique<ExtensionViewController>(); }}};
    return controllers;
}

} // namespace

ExtensionViewController::ExtensionViewController()
    : host_(systemWorkspace(systemEnvironment())),
      editor_({host_, systemFileCalls(), random_, secureUUIDs(), secondsSince2001Now,
               stateFolders(systemEnvironment()), userLocale()}),
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
    const ExtensionDescription description = extensionDescription();
    new PanelSheets(
        editor_, view_,
        [] {
            return HelpContent(
                loadManual(systemFileCalls(), ShotweaverHelpBundle::path("ShotweaverHelp", "json")),
                userLocale());
        },
        versionText(description.version, description.build));
    view_->installEventFilter(this);
    host_.setWindow(view_);
    return view_;
}

/// The editor restores its session when its panel is first seen.
bool ExtensionViewController::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Show) editor_.appear();
    return QObject::eventFilter(watched, event);
}

std::unique_ptr<ExtensionViewController> makeViewController(const std::string& name) {
    const auto found = registeredControllers().find(name);
    return found == registeredControllers().end() ? nullptr : found->second();
}

} // namespace shotweaver
