#include "host/views/QtHostServices.h"

#include "host/FinalCutIntegration.h"
#include "host/OpenError.h"
#include "host/views/ItemDialog.h"
#include "platform/PlatformError.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QMetaObject>
#include <QUrl>

namespace shotweaver {

namespace {

// Entries of the defaults: where the last file was opened, and into what folder one was saved.
constexpr const char* openFolder = "Shotweaver.openFolder.v1";
constexpr const char* saveFolder = "Shotweaver.saveFolder.v1";

} // namespace

QtHostServices::QtHostServices(std::unique_ptr<Workspace> workspace, UserDefaults defaults)
    : workspace_(std::move(workspace)), defaults_(std::move(defaults)) {}

QtHostServices::~QtHostServices() = default;

std::optional<std::string> QtHostServices::chooseItem(const OpenPanel& panel) {
    const char* const entry = panel.canChooseFiles ? openFolder : saveFolder;
    ItemDialog dialog(panel, window_);
    dialog.startIn(QDir::homePath());
    dialog.startIn(rememberedFolder(entry));
    if (dialog.exec() != QDialog::Accepted || dialog.chosen().isEmpty()) return std::nullopt;
    const QString chosen = dialog.chosen();
    remember(entry, panel.canChooseFiles ? QFileInfo(chosen).absolutePath() : chosen);
    return chosen.toStdString();
}

/// What cannot be read or stored is forgotten: it only saves a few clicks.
QString QtHostServices::rememberedFolder(const char* entry) const {
    try {
        return QString::fromStdString(defaults_.data(entry));
    } catch (const PlatformError&) {
        return {};
    }
}

void QtHostServices::remember(const char* entry, const QString& folder) {
    try {
        defaults_.setData(entry, folder.toStdString());
    } catch (const PlatformError&) {
        return;
    }
}

BusySign QtHostServices::showBusy() {
    QApplication::setOverrideCursor(Qt::WaitCursor);
    return {nullptr, [](const void*) { QApplication::restoreOverrideCursor(); }};
}

void QtHostServices::openInFinalCut(const std::string& path, OpenCompletion completion) {
    shotweaver::openInFinalCut(
        path, *workspace_, *this,
        [this](std::function<void()> function) { later(std::move(function)); },
        std::move(completion));
}

void QtHostServices::showInFolder(const std::string& path, OpenCompletion completion) {
    const QString folder = QFileInfo(QString::fromStdString(path)).path();
    if (QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) return completion(std::nullopt);
    completion(openError("“" + folder.toStdString() + "” could not be shown."));
}

void QtHostServices::later(std::function<void()> function) {
    QMetaObject::invokeMethod(this, std::move(function), Qt::QueuedConnection);
}

} // namespace shotweaver
