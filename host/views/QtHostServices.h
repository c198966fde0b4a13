#pragma once

#include "editor/HostServices.h"
#include "host/Workspace.h"

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
    explicit QtHostServices(std::unique_ptr<Workspace> workspace);
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
    std::unique_ptr<Workspace> workspace_;
    QPointer<QWidget> window_;
};

} // namespace shotweaver
