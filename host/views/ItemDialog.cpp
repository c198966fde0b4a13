#include "host/views/ItemDialog.h"

#include "planning/ProjectFile.h"
#include "widgets/Sheet.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"

#include <QFileInfo>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

bool isBundle(const QString& path) {
    return QFileInfo(path).isDir() && hasProjectExtension(path.toStdString());
}

} // namespace

ItemDialog::ItemDialog(const OpenPanel& panel, QWidget* parent)
    : QFileDialog(parent), takesBundles_(panel.canChooseFiles && panel.canChooseDirectories) {
    setObjectName(QStringLiteral("itemDialog"));
    makeSheet(*this);
#if defined(Q_OS_MACOS)
    // The system's own dialog has no other place for it, and knows bundles.
    setWindowTitle(QString::fromStdString(panel.message));
#else
    // A desktop's own dialog has no place for a message, and chooses files or folders, not either.
    setOption(QFileDialog::DontUseNativeDialog);
    setWindowTitle(panel.canChooseFiles ? QStringLiteral("Open") : QStringLiteral("Save"));
    showMessage(QString::fromStdString(panel.message));
#endif
    setAcceptMode(QFileDialog::AcceptOpen);
    setFileMode(panel.canChooseFiles ? QFileDialog::ExistingFile : QFileDialog::Directory);
    setOption(QFileDialog::ShowDirsOnly, !panel.canChooseFiles);
    setOption(QFileDialog::ReadOnly, !panel.canCreateDirectories);
    if (!panel.prompt.empty())
        setLabelText(QFileDialog::Accept, QString::fromStdString(panel.prompt));
    if (!takesBundles_) return;
    setNameFilters(
        {QStringLiteral("Final Cut XML (*.fcpxml *.fcpxmld)"), QStringLiteral("All files (*)")});
    connect(this, &QFileDialog::currentChanged, this,
            [this](const QString& path) { current_ = path; });
    connect(this, &QFileDialog::directoryEntered, this, [this](const QString& path) {
        if (isBundle(path)) take(path);
    });
}

/// Above all else, where a window has its menus.
void ItemDialog::showMessage(const QString& message) {
    auto* const place = new QWidget;
    auto* const text = new WrappedLabel(style::TextStyle::body);
    text->setObjectName(QStringLiteral("itemMessage"));
    text->setText(message);
    auto* const column = new QVBoxLayout(place);
    const int margin = style::scaled(style::close);
    column->setContentsMargins(margin, margin, margin, 0);
    column->addWidget(text);
    layout()->setMenuBar(place);
}

void ItemDialog::startIn(const QString& folder) {
    if (!folder.isEmpty() && QFileInfo(folder).isDir()) setDirectory(folder);
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
