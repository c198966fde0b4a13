#pragma once

#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

namespace shotweaver {

/// Sees to it that one panel at a time works on a session: a second one hands its file to the first
/// and ends. The first is the one that holds a lock beside the session; where none can be held,
/// each is a first.
class PanelInstance : public QObject {
    Q_OBJECT

  public:
    /// `folder` holds the session; it is made when there is none.
    explicit PanelInstance(const QString& folder);

    /// Asks the first panel to open a file (an absolute path; empty for none) and to come to the
    /// front. False when this is the first one, and when the other does not answer: then it works
    /// beside the other.
    bool handOver(const QString& file);

  Q_SIGNALS:
    /// Another panel was started, perhaps with a file, and has ended.
    void handedOver(const QString& file);

  private:
    void listen();
    void receive();

    QString socketPath_;
    QLockFile lock_;
    QLocalServer server_;
    bool isFirst_ = false;
};

} // namespace shotweaver
