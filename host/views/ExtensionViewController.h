#pragma once

#include "editor/ContentView.h"
#include "host/InboxSubscription.h"
#include "host/XMLInbox.h"
#include "host/views/QtHostServices.h"
#include "platform/Random.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <string>

namespace shotweaver {

class ExtensionDropContainer;

/// The extension's principal view controller. The program's description names it as
/// `ShotweaverExtensionViewController`, under which it is registered.
class ExtensionViewController : public QObject {
    Q_OBJECT

  public:
    static constexpr const char* registeredName = "ShotweaverExtensionViewController";

    /// Works on the user's own session and presets, and with the shared inbox.
    Q_INVOKABLE ExtensionViewController();
    ~ExtensionViewController() override;

    /// The view, made when it is first asked for. Whoever asks becomes its owner.
    QWidget* view();
    ContentView& editor() { return editor_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QtHostServices host_;
    SecureRandom random_;
    ContentView editor_;
    InboxSubscription inbox_;
    QPointer<ExtensionDropContainer> view_;
};

/// Makes the view controller of that name; null when none is registered under it.
std::unique_ptr<ExtensionViewController> makeViewController(const std::string& name);

} // namespace shotweaver
