#pragma once

#include "host/XMLInbox.h"

#include <QWidget>

namespace shotweaver {

/// The root view: takes drags of Final Cut Pro's XML, and only those.
class ExtensionDropContainer : public QWidget {
    Q_OBJECT

  public:
    /// `inbox` must outlive the container.
    explicit ExtensionDropContainer(XMLInbox& inbox, QWidget* parent = nullptr);

  Q_SIGNALS:
    /// Such a drag is over the view, or is not any more.
    void targeted(bool isTargeted);

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void answer(QDropEvent& event);

    XMLInbox& inbox_;
};

} // namespace shotweaver
