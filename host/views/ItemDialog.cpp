#include "host/views/ItemDialog.h"

#include "planning/ProjectFile.h"

#include <QFileInfo>

namespace shotweaver {

namespace {

bool isBundle(const QString& path) {
    return QFileInfo(path).isDir() && hasProjectExtension(path.toStdString());
}

} // namespace

ItemDialog::ItemDialog(const OpenPanel& panel, QWidget* parent)
    : QFileDialog(parent), takesBundles_(panel.canChooseFiles && panel.canChooseDirectories) {
    setObjectName(QStringLiteral("itemDialog"));
    setWindowTitle(QString::fromStdString(panel.message));
    setAcceptMode(QFileDialog::AcceptOpen);
    setFileMode(panel.canChooseFiles ? QFileDialog::ExistingFile : QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly, !panel.canChooseFiles);
    setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    if (!panel.prompt.empty())
        setLabelText(QFileDialog::Accept, QString::fromStdString(panel.prompt));
    if (!takesBundles_) return;
#if !defined(Q_OS_MACOS)
    // A desktop's own dialog chooses files or folders, not either. macOS knows of bundles.
    setOption(QFileDialog::DontUseNativeDialog);
#endif
    setNameFilters(
        {QStringLiteral("Final Cut XML (*.fcpxml *.fcpxmld)"), QStringLiteral("All files (*)")});
    connect(this, &QFileDialog::currentChanged, this,
            [this](const QString& path) { current_ = path; });
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& path) {
        if (isBundle(path)) take(path);
    });
}

QString ItemDialog::chosen() const {
    return bundle_.isEmpty() ? selectedFiles().value(0) : bundle_;
}

void ItemDialog::accept() {
    const QString typed = selectedFiles().value(0);
    if (takesBundles_ && isBundle(typed)) return take(typed);
    if (takesBundles_ && isBundle(current_) && !QFileInfo(typed).isFile()) return take(current_);
    QFileDialog::accept();
}

void ItemDialog::take(const QString& bundle) {
    bundle_ = bundle;
    done(Accepted);
}

} // namespace shotweaver
