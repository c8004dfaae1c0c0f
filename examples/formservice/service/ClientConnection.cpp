#include "ClientConnection.h"

#include "FormSession.h"
#include "RequestContext.h"

#include <platform/PeerProcess.h>
#include <protocol/FormAnswer.h>

#include <QtNetwork/QLocalSocket>

namespace {

//! What a waiting line counts, so that many short ones do not wait for nothing.
qsizetype weight(const std::optional<QByteArray>& line)
{
    constexpr qsizetype bookkeeping = 64;
    return bookkeeping + (line ? line->size() : 0);
}

} // namespace

ClientConnection::ClientConnection(QLocalSocket* socket, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
    , m_clientPID(peerProcess(socket->socketDescriptor()).value_or(0))
{
    m_socket->setParent(this);
    m_next.setSingleShot(true);
    m_next.setInterval(0);
    connect(&m_next, &QTimer::timeout, this, &ClientConnection::serveNext);
    connect(m_socket, &QLocalSocket::readyRead, this, &ClientConnection::read);
    // Queued: writing an answer may notice that the client is gone, in the middle of closing the form.
    connect(m_socket, &QLocalSocket::disconnected, this, &ClientConnection::disconnected,
            Qt::QueuedConnection);
    read();
    if (m_socket->state() == QLocalSocket::UnconnectedState)
        QMetaObject::invokeMethod(this, &ClientConnection::disconnected, Qt::QueuedConnection);
}

void ClientConnection::read()
{
    const auto lines = m_splitter.feed(m_socket->readAll());
    if (m_socket->state() != QLocalSocket::ConnectedState)
        return;
    for (const std::optional<QByteArray>& line : lines)
        m_waitingSize += weight(line);
    m_waiting.append(lines);
    if (m_waitingSize > MaximumWaiting) {
        m_waiting.clear();
        m_waitingSize = 0;
        m_socket->write(FormAnswer::error(QStringLiteral("too many requests are waiting")));
        m_socket->disconnectFromServer();
        return;
    }
    serveNext();
}

void ClientConnection::serveNext()
{
    while (!m_busy && !m_waiting.isEmpty() && m_socket->state() == QLocalSocket::ConnectedState) {
        m_busy = true;
        const std::optional<QByteArray> line = m_waiting.takeFirst();
        m_waitingSize -= weight(line);
        if (line)
            serve(*line);
        else
            send(FormAnswer::error(QStringLiteral("a line is longer than 1 MiB")));
    }
}

void ClientConnection::serve(const QByteArray& line)
{
    QString error;
    const FormRequest request = FormRequest::fromJson(line, &error);
    if (!error.isEmpty()) {
        send(FormAnswer::error(error));
        return;
    }
    auto context =
        std::make_unique<RequestContext>([self = QPointer<ClientConnection>(this)](const QByteArray& answer) {
            if (self)
                self->send(answer);
        });
    m_session = FormSession::open(request, std::move(context), m_clientPID);
}

void ClientConnection::send(const QByteArray& answer)
{
    m_busy = false;
    m_session = nullptr;
    if (m_socket->state() == QLocalSocket::ConnectedState)
        m_socket->write(answer);
    if (m_socket->bytesToWrite() > MaximumWaiting)
        m_socket->abort();
    // Not at once: an answer is sent while its form is still closing.
    m_next.start();
}

void ClientConnection::disconnected()
{
    deleteLater();
    if (m_session)
        m_session->close();
}
