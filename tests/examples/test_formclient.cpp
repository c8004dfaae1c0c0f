#include "ZEFTest.h"

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

#include <memory>

namespace {

constexpr int patience = 30000;

} // namespace

//! The client as a process, on a real local socket or named pipe; this program plays the service.
class TestFormClient : public ZEFTest {
    Q_OBJECT

    void prepare() override
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_server = std::make_unique<QLocalServer>();
        m_server->setSocketOptions(QLocalServer::UserAccessOption);
        QVERIFY2(m_server->listen(m_folder->filePath(QStringLiteral("socket"))),
                 qPrintable(m_server->errorString()));
        m_socketName = m_server->fullServerName();
    }
    void tidyUp() override
    {
        m_server.reset();
        m_folder.reset();
    }

private Q_SLOTS:
    void printsAnswersAsTheyCome();
    void sendsLinesAsTheyAre();
    void errorAnswersShowInTheExitCode();
    void reportsAServiceThatGoesAway();
    void reportsHalfAnAnswer();
    void givesUpInTime();
    void reportsAMissingService();

private:
    std::unique_ptr<QProcess> start(const QStringList& arguments = {}) const
    {
        auto client = std::make_unique<QProcess>();
        client->start(QCoreApplication::applicationDirPath() + u'/' + QStringLiteral(CLIENT_PROGRAM),
                      QStringList{QStringLiteral("--socket"), m_socketName} + arguments);
        return client;
    }
    //! The service's end of the next connection.
    QLocalSocket* accept() const
    {
        return m_server->waitForNewConnection(patience) ? m_server->nextPendingConnection() : nullptr;
    }
    //! Types \a input for the client. Waiting for a socket would not pass it on.
    static bool enter(QProcess* client, const QByteArray& input)
    {
        client->write(input);
        return client->waitForBytesWritten(patience);
    }
    static QByteArray readLine(QLocalSocket* socket)
    {
        while (!socket->canReadLine()) {
            if (!socket->waitForReadyRead(patience))
                return "no line";
        }
        return socket->readLine();
    }
    static bool writeAll(QLocalSocket* socket, const QByteArray& bytes)
    {
        socket->write(bytes);
        while (socket->bytesToWrite() > 0) {
            if (!socket->waitForBytesWritten(patience))
                return false;
        }
        return true;
    }
    //! What a program printed, with the line ends of every platform alike.
    static QByteArray lines(QByteArray output) { return output.replace("\r\n", "\n"); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QLocalServer> m_server;
    QString m_socketName;
};

void TestFormClient::printsAnswersAsTheyCome()
{
    const auto client = start();
    QLocalSocket* socket = accept();
    QVERIFY(socket);
    QVERIFY(enter(client.get(), "one\n"));
    QCOMPARE(readLine(socket), QByteArray("one\n"));
    const QByteArray first = "{\"selection\":1,\"values\":{\"user.text\":\"Grüß %s %n €\"}}\n";
    QVERIFY(writeAll(socket, first));
    QVERIFY(client->waitForReadyRead(patience));
    QCOMPARE(lines(client->readAllStandardOutput()), first);

    QVERIFY(enter(client.get(), "two\n"));
    QCOMPARE(readLine(socket), QByteArray("two\n"));
    QVERIFY(writeAll(socket, "{\"selection\":0,\"values\":{}}\n"));
    client->closeWriteChannel();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(lines(client->readAllStandardOutput()), QByteArray("{\"selection\":0,\"values\":{}}\n"));
    QCOMPARE(client->readAllStandardError(), QByteArray());
    QCOMPARE(client->exitCode(), 0);
}

void TestFormClient::sendsLinesAsTheyAre()
{
    const auto client = start();
    QLocalSocket* socket = accept();
    QVERIFY(socket);
    // blank lines are no requests, and the last line needs no line feed
    QVERIFY(enter(client.get(), "\n   \n{\"title\":\"Grüß %s\"}"));
    client->closeWriteChannel();
    QCOMPARE(readLine(socket), QByteArray("{\"title\":\"Grüß %s\"}\n"));
    QVERIFY(writeAll(socket, "{\"selection\":0,\"values\":{}}\n"));
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 0);
}

void TestFormClient::errorAnswersShowInTheExitCode()
{
    const auto client = start();
    QLocalSocket* socket = accept();
    QVERIFY(socket);
    QVERIFY(enter(client.get(), "a\nb\n"));
    client->closeWriteChannel();
    QCOMPARE(readLine(socket), QByteArray("a\n"));
    QVERIFY(writeAll(socket, "{\"error\":\"unknown form: a\"}\n"));
    QCOMPARE(readLine(socket), QByteArray("b\n"));
    QVERIFY(writeAll(socket, "{\"selection\":1,\"values\":{}}\n"));
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 2);
}

void TestFormClient::reportsAServiceThatGoesAway()
{
    const auto client = start();
    QLocalSocket* socket = accept();
    QVERIFY(socket);
    QVERIFY(enter(client.get(), "{}\n"));
    QCOMPARE(readLine(socket), QByteArray("{}\n"));
    socket->abort();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 4);
    QCOMPARE(lines(client->readAllStandardError()),
             QByteArray("zefui-formclient: the service went away before it answered\n"));
    QCOMPARE(client->readAllStandardOutput(), QByteArray());
}

void TestFormClient::reportsHalfAnAnswer()
{
    const auto client = start();
    QLocalSocket* socket = accept();
    QVERIFY(socket);
    QVERIFY(enter(client.get(), "{}\n"));
    QCOMPARE(readLine(socket), QByteArray("{}\n"));
    QVERIFY(writeAll(socket, "{\"selection\":"));
    socket->disconnectFromServer();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 4);
    QCOMPARE(client->readAllStandardOutput(), QByteArray());
}

void TestFormClient::givesUpInTime()
{
    const auto client = start({QStringLiteral("--timeout"), QStringLiteral("1")});
    QLocalSocket* socket = accept();
    QVERIFY(socket);
    QVERIFY(enter(client.get(), "{}\n"));
    client->closeWriteChannel();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 5);
    QCOMPARE(lines(client->readAllStandardError()),
             QByteArray("zefui-formclient: the service did not answer in time\n"));
}

void TestFormClient::reportsAMissingService()
{
    m_server->close();
    const auto client = start();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 3);
    const QByteArray error = lines(client->readAllStandardError());
    const QByteArray expected = "zefui-formclient: no service on " + m_socketName.toUtf8() + ": ";
    QVERIFY2(error.startsWith(expected), error.constData());
    QCOMPARE(error.count('\n'), 1);
}

ZEF_TEST_MAIN(TestFormClient)
#include "test_formclient.moc"
