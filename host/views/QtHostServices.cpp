#include "host/views/QtHostServices.h"

#include "host/FinalCutIntegration.h"
#include "host/OpenError.h"
#include "host/views/ItemDialog.h"

#include <QApplication>
#include <QDesktopServices>
#include <QFileInfo>
#include <QMetaObject>
#include <QUrl>

namespace shotweaver {

QtHostServices::QtHostServices(std::unique_ptr<Workspace> workspace)
    : workspace_(std::move(workspace)) {}

QtHostServices::~QtHostServices() = default;

std::optional<std::string> QtHostServices::chooseItem(const OpenPanel& panel) {
    ItemDialog dialog(panel, window_);
    if (dialog.exec() != QDialog::Accepted || dialog.chosen().isEmpty()) return std::nullopt;
    return dialog.chosen().toStdString();
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
