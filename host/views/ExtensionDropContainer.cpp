#include "host/views/ExtensionDropContainer.h"

#include "host/views/MimePasteboard.h"

#include <QDropEvent>

namespace shotweaver {

ExtensionDropContainer::ExtensionDropContainer(XMLInbox& inbox, QWidget* parent)
    : QWidget(parent), inbox_(inbox) {
    setObjectName(QStringLiteral("dropContainer"));
    setAcceptDrops(true);
}

void ExtensionDropContainer::answer(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(offersXML(MimePasteboard(*event.mimeData())));
    if (event.isAccepted()) Q_EMIT targeted(true);
}

void ExtensionDropContainer::dragLeaveEvent(QDragLeaveEvent*) {
    Q_EMIT targeted(false);
}

void ExtensionDropContainer::dragEnterEvent(QDragEnterEvent* event) {
    answer(*event);
}

void ExtensionDropContainer::dragMoveEvent(QDragMoveEvent* event) {
    answer(*event);
}

void ExtensionDropContainer::dropEvent(QDropEvent* event) {
    Q_EMIT targeted(false);
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(receiveDrop(MimePasteboard(*event->mimeData()), inbox_));
}

} // namespace shotweaver
