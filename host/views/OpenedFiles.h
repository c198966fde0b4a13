#pragma once

#include "host/XMLInbox.h"

#include <QObject>

namespace shotweaver {

/// Takes the files that the system hands to a running application ("Open with", a double click,
/// a file on its icon) the way of a project that a host hands in.
class OpenedFiles : public QObject {
    Q_OBJECT

  public:
    /// Watches `application`; both it and the inbox must outlive this.
    OpenedFiles(QObject& application, XMLInbox& inbox);

    /// The file or bundle at a path, as if it had been opened.
    void open(const QString& path);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    XMLInbox& inbox_;
};

} // namespace shotweaver
