#pragma once

#include <protocol/LineSplitter.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

class FormSession;
class QLocalSocket;

/*!
 * One client: reads its requests, serves them one after the other and writes the answers in the same
 * order. A client that goes away takes its open form with it. Deletes itself when the client is gone.
 */
class ClientConnection : public QObject {
    Q_OBJECT

public:
    /*!
     * Bytes of requests that may wait for the one in progress, and of answers that may wait for the
     * client to read them; beyond it the client is sent away.
     */
    static constexpr qsizetype MaximumWaiting = 16 * LineSplitter::MaximumLineLength;

    //! Takes over the connected \a socket.
    ClientConnection(QLocalSocket* socket, QObject* parent);

private:
    void read();
    void serveNext();
    void serve(const QByteArray& line);
    void send(const QByteArray& answer);
    void disconnected();

    QLocalSocket* m_socket;
    qint64 m_clientPID;
    LineSplitter m_splitter;
    QList<std::optional<QByteArray>> m_waiting;
    qsizetype m_waitingSize = 0;
    bool m_busy = false;
    QTimer m_next;
    QPointer<FormSession> m_session;
};
