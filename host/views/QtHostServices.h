#pragma once

#include "editor/HostServices.h"
#include "host/Workspace.h"
#include "platform/UserDefaults.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace shotweaver {

/// The host's services with Qt's dialogs and event loop. Nothing has to be granted here: the
/// program may read what its user may.
class QtHostServices final : public QObject, public HostServices {
    Q_OBJECT

  public:
    /// Dialogs start in the folders of the last ones, which are remembered in `defaults`.
    QtHostServices(std::unique_ptr<Workspace> workspace, UserDefaults defaults);
    ~QtHostServices() override;

    /// The window that dialogs belong to.
    void setWindow(QWidget* window) { window_ = window; }

    std::optional<std::string> chooseItem(const OpenPanel& panel) override;
    bool startAccess(const std::string&) override { return false; }
    void stopAccess(const std::string&) override {}
    /// A busy cursor.
    BusySign showBusy() override;
    void openInFinalCut(const std::string& path, OpenCompletion completion) override;
    void showInFolder(const std::string& path, OpenCompletion completion) override;
    void later(std::function<void()> function) override;

  private:
    QString rememberedFolder(const char* entry) const;
    void remember(const char* entry, const QString& folder);

    std::unique_ptr<Workspace> workspace_;
    UserDefaults defaults_;
    QPointer<QWidget> window_;
};

} // namespace shotweaver
