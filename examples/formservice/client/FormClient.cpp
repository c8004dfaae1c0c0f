#include "FormClient.h"

namespace {

//! As Qt's waiting functions take it; -1 waits for ever.
int milliseconds(QDeadlineTimer deadline)
{
    return static_cast<int>(qMin<qint64>(deadline.remainingTime(), std::numeric_limits<int>::max()));
}

} // namespace

bool FormClient::connectTo(const QString& socketName, QDeadlineTimer deadline)
{
    m_socketName = socketName;
    m_socket.connectToServer(socketName);
    if (m_socket.waitForConnected(milliseconds(deadline)))
        return true;
    m_failure = Failure::NoService;
    return false;
}

std::optional<QByteArray> FormClient::ask(const QByteArray& line, QDeadlineTimer deadline)
{
    m_socket.write(line + '\n');
    while (m_socket.bytesToWrite() > 0) {
        if (!m_socket.waitForBytesWritten(milliseconds(deadline))) {
            fail();
            return std::nullopt;
        }
    }
    while (!m_socket.canReadLine()) {
        if (!m_socket.waitForReadyRead(milliseconds(deadline))) {
            fail();
            return std::nullopt;
        }
    }
    return m_socket.readLine();
}

void FormClient::fail()
{
    const bool connected = m_socket.state() == QLocalSocket::ConnectedState;
    m_failure = connected ? Failure::TimedOut : Failure::ConnectionLost;
}

QString FormClient::errorText() const
{
    switch (m_failure) {
    case Failure::None:
        break;
    case Failure::NoService:
        return u"no service on " + m_socketName + u": " + m_socket.errorString();
    case Failure::ConnectionLost:
        return QStringLiteral("the service went away before it answered");
    case Failure::TimedOut:
        return QStringLiteral("the service did not answer in time");
    }
    return QString();
}
