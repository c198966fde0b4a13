#include "host/views/OpenedFiles.h"

#include "platform/FileURL.h"

#include <QFileInfo>
#include <QFileOpenEvent>

namespace shotweaver {

OpenedFiles::OpenedFiles(QObject& application, XMLInbox& inbox) : inbox_(inbox) {
    application.installEventFilter(this);
}

void OpenedFiles::open(const QString& path) {
    inbox_.setURL(fileURL(QFileInfo(path).absoluteFilePath().toStdString()));
}

bool OpenedFiles::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::FileOpen) return QObject::eventFilter(watched, event);
    open(static_cast<QFileOpenEvent*>(event)->file());
    return true;
}

} // namespace shotweaver
