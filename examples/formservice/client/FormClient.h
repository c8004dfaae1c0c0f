#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>
#include <QtNetwork/QLocalSocket>

#include <optional>

//! The client's end of the conversation; every call blocks until it is done or cannot be done.
class FormClient {
public:
    enum class Failure { None, NoService, ConnectionLost, TimedOut };

    bool connectTo(const QString& socketName, QDeadlineTimer deadline);

    //! Sends one request line and returns the answer's line; nothing when no answer came.
    std::optional<QByteArray> ask(const QByteArray& line, QDeadlineTimer deadline);

    Failure failure() const { return m_failure; }
    //! What went wrong, for the user.
    QString errorText() const;

private:
    void fail();

    QLocalSocket m_socket;
    QString m_socketName;
    Failure m_failure = Failure::None;
};
