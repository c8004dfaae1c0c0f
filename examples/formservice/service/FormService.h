#pragma once

#include <QtCore/QLockFile>
#include <QtNetwork/QLocalServer>

#include <memory>

//! Listens on a local socket that only this user can open, and serves each client that comes.
class FormService : public QObject {
    Q_OBJECT

public:
    explicit FormService(QObject* parent = nullptr);

    /*!
     * Starts to listen on \a socketName. The socket that a service left behind which is gone is
     * replaced; one that is still served is not. False when it does not work; errorString() says why.
     */
    bool listen(const QString& socketName);
    QString errorString() const { return m_error; }

private:
    void acceptClients();

    std::unique_ptr<QLockFile> m_lock;
    QLocalServer m_server;
    QString m_error;
};
