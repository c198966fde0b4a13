#include "host/views/ExtensionDropContainer.h"

#include "host/views/MimePasteboard.h"

#include <QDropEvent>

namespace shotweaver {

namespace {

void answer(QDropEvent& event) {
    event.setDropAction(Qt::CopyAction);
    event.setAccepted(offersXML(MimePasteboard(*event.mimeData())));
}

} // namespace

ExtensionDropContainer::ExtensionDropContainer(XMLInbox& inbox, QWidget* parent)
    : QWidget(parent), inbox_(inbox) {
    setObjectName(QStringLiteral("dropContainer"));
    setAcceptDrops(true);
}

void ExtensionDropContainer::dragEnterEvent(QDragEnterEvent* event) {
    answer(*event);
}

void ExtensionDropContainer::dragMoveEvent(QDragMoveEvent* event) {
    answer(*event);
}

void ExtensionDropContainer::dropEvent(QDropEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(receiveDrop(MimePasteboard(*event->mimeData()), inbox_));
}

} // namespace shotweaver
