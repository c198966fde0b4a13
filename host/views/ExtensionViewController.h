#pragma once

#include "editor/ContentView.h"
#include "host/InboxSubscription.h"
#include "host/XMLInbox.h"
#include "host/views/QtHostServices.h"
#include "platform/Random.h"

#include <QObject>
#include <QPointer>

namespace shotweaver {

class ExtensionDropContainer;

/// The extension's principal view controller, `ShotweaverExtensionViewController` to a host that
/// looks it up by name.
class ExtensionViewController : public QObject {
    Q_OBJECT

  public:
    /// Works on the user's own session and presets, and with the shared inbox.
    ExtensionViewController();
    ~ExtensionViewController() override;

    /// The view, made when it is first asked for. Whoever asks becomes its owner.
    QWidget* view();
    ContentView& editor() { return editor_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void showTitle();

    QtHostServices host_;
    SecureRandom random_;
    ContentView editor_;
    InboxSubscription inbox_;
    QPointer<ExtensionDropContainer> view_;
    Observers::Subscription subscription_;
};

} // namespace shotweaver
