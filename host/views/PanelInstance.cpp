#include "host/views/PanelInstance.h"

#include <QDataStream>
#include <QDeadlineTimer>
#include <QDir>
#include <QLocalSocket>
#include <QThread>

namespace shotweaver {

namespace {

constexpr int patience = 5000; // milliseconds; the first panel may be reading a large project
constexpr auto format = QDataStream::Qt_6_4;
constexpr char taken = 'T';

/// The token with which a desktop lets another program come to the front.
constexpr const char* activationToken = "XDG_ACTIVATION_TOKEN";

QString inFolder(const QString& folder, const char* name) {
    QDir().mkpath(folder);
    return QDir(folder).filePath(QString::fromUtf8(name));
}

} // namespace

PanelInstance::PanelInstance(const QString& folder)
    : socketPath_(inFolder(folder, "panel.socket")), lock_(inFolder(folder, "panel.lock")) {
    lock_.setStaleLockTime(0); // only its process's end frees it
    isFirst_ = lock_.tryLock() || lock_.error() != QLockFile::LockFailedError;
    if (isFirst_) listen();
}

/// A socket that an earlier panel left behind is in nobody's use: the lock is held. Where there can
/// be no socket, other panels work beside this one.
void PanelInstance::listen() {
    QLocalServer::removeServer(socketPath_);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&server_, &QLocalServer::newConnection, this, &PanelInstance::receive);
    server_.listen(socketPath_);
}

bool PanelInstance::handOver(const QString& file) {
    if (isFirst_) return false;
    const QDeadlineTimer deadline(patience);
    QLocalSocket socket;
    socket.connectToServer(socketPath_);
    // It may have just taken the lock.
    while (!socket.waitForConnected(100) && !deadline.hasExpired()) {
        QThread::msleep(20);
        socket.connectToServer(socketPath_);
    }
    QDataStream stream(&socket);
    stream.setVersion(format);
    stream << qgetenv(activationToken) << file;
    char answer = 0;
    while (socket.bytesAvailable() == 0)
        if (!socket.waitForReadyRead(static_cast<int>(deadline.remainingTime()))) return false;
    return socket.getChar(&answer) && answer == taken;
}

/// Answered before it is done: what is opened may bring a dialog.
void PanelInstance::receive() {
    while (QLocalSocket* const socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        const auto read = [this, socket] {
            QDataStream stream(socket);
            stream.setVersion(format);
            stream.startTransaction();
            QByteArray token;
            QString file;
            stream >> token >> file;
            if (!stream.commitTransaction()) return; // the rest is on its way
            socket->putChar(taken);
            socket->flush();
            if (!token.isEmpty()) qputenv(activationToken, token);
            Q_EMIT handedOver(file);
        };
        connect(socket, &QLocalSocket::readyRead, this, read);
        if (socket->bytesAvailable() > 0) read();
    }
}

} // namespace shotweaver
