#include "FormService.h"

#include "ClientConnection.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtNetwork/QLocalSocket>

namespace {

constexpr int connectTimeout = 1000; // milliseconds

bool isServed(const QString& socketName)
{
    QLocalSocket probe;
    probe.connectToServer(socketName);
    return probe.waitForConnected(connectTimeout);
}

//! Qt would replace whatever stands under the name of the socket.
bool isSomethingElse(const QString& socketName)
{
    const QFileInfo info(QDir::temp(), socketName);
    return info.isFile() || info.isDir();
}

} // namespace

FormService::FormService(QObject* parent)
    : QObject(parent)
{
    m_server.setSocketOptions(QLocalServer::UserAccessOption);
    connect(&m_server, &QLocalServer::newConnection, this, &FormService::acceptClients);
}

bool FormService::listen(const QString& socketName)
{
    // Held from before the question until the end of the service: of two that start at the same moment
    // both would find nobody there, and the second would take the socket away from the first.
    m_lock = std::make_unique<QLockFile>(QDir::temp().filePath(socketName) + u".lock");
    m_lock->setStaleLockTime(0); // as long as its process lives, however old it is
    const bool isTaken = !m_lock->tryLock(0) && m_lock->error() == QLockFile::LockFailedError;
    if (isTaken || isServed(socketName)) {
        m_error = u"a service is already listening on " + socketName;
        return false;
    }
    if (isSomethingElse(socketName)) {
        m_error = socketName + u" exists and is not a socket";
        return false;
    }
    QLocalServer::removeServer(socketName);
    if (!m_server.listen(socketName)) {
        m_error = u"cannot listen on " + socketName + u": " + m_server.errorString();
        return false;
    }
    return true;
}

void FormService::acceptClients()
{
    while (QLocalSocket* socket = m_server.nextPendingConnection())
        new ClientConnection(socket, this);
}
