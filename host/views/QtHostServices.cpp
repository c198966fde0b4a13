#include "host/views/QtHostServices.h"

#include "host/FinalCutIntegration.h"

#include <QFileDialog>
#include <QMetaObject>

namespace shotweaver {

namespace {

/// Bundles are folders, so a dialog that offers both has to take either.
void offer(QFileDialog& dialog, const OpenPanel& panel) {
    dialog.setWindowTitle(QString::fromStdString(panel.message));
    dialog.setFileMode(panel.canChooseFiles ? QFileDialog::AnyFile : QFileDialog::Directory);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setOption(QFileDialog::ShowDirsOnly, !panel.canChooseFiles);
    dialog.setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    if (!panel.prompt.empty())
        dialog.setLabelText(QFileDialog::Accept, QString::fromStdString(panel.prompt));
}

} // namespace

QtHostServices::QtHostServices(std::unique_ptr<Workspace> workspace)
    : workspace_(std::move(workspace)) {}

QtHostServices::~QtHostServices() = default;

std::optional<std::string> QtHostServices::chooseItem(const OpenPanel& panel) {
    QFileDialog dialog(window_);
    offer(dialog, panel);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return dialog.selectedFiles().constFirst().toStdString();
}

void QtHostServices::openInFinalCut(const std::string& path, OpenCompletion completion) {
    shotweaver::openInFinalCut(
        path, *workspace_, *this,
        [this](std::function<void()> function) { later(std::move(function)); },
        std::move(completion));
}

void QtHostServices::later(std::function<void()> function) {
    QMetaObject::invokeMethod(this, std::move(function), Qt::QueuedConnection);
}

} // namespace shotweaver
