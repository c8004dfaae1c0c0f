#include "ZEFTest.h"

#include <platform/PeerProcess.h>

#include <QtCore/QProcess>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

#include <memory>

namespace {

constexpr int patience = 30000;

//! What this program does as the other process: connects, and ends when the server hangs up.
int connectTo(const QString& server)
{
    QLocalSocket socket;
    socket.connectToServer(server);
    if (!socket.waitForConnected(patience))
        return 1;
    socket.waitForDisconnected(patience);
    return 0;
}

} // namespace

class TestPeerProcess : public ZEFTest {
    Q_OBJECT

    void prepare() override
    {
        // A path, as the services have it: the name of a named pipe is made from it on Windows.
        m_folder = std::make_unique<QTemporaryDir>();
        m_server = std::make_unique<QLocalServer>();
        m_server->setSocketOptions(QLocalServer::UserAccessOption);
        QVERIFY2(m_server->listen(m_folder->filePath(QStringLiteral("socket"))),
                 qPrintable(m_server->errorString()));
    }
    void tidyUp() override
    {
        m_server.reset();
        m_folder.reset();
    }

private Q_SLOTS:
    void anotherProcess();
    void twoProcessesAtOnce();
    void thisProcess();
    void noSocket();

private:
    std::unique_ptr<QProcess> startPeer() const
    {
        auto peer = std::make_unique<QProcess>();
        peer->start(QCoreApplication::applicationFilePath(),
                    {QStringLiteral("--connect"), m_server->serverName()});
        return peer;
    }
    std::unique_ptr<QLocalSocket> accepted() const
    {
        if (!QTest::qWaitFor([this] { return m_server->hasPendingConnections(); }, patience))
            return nullptr;
        return std::unique_ptr<QLocalSocket>(m_server->nextPendingConnection());
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QLocalServer> m_server;
};

void TestPeerProcess::anotherProcess()
{
    const auto peer = startPeer();
    auto socket = accepted();
    QVERIFY(socket);
    QCOMPARE(peerProcess(socket->socketDescriptor()), std::optional<qint64>(peer->processId()));

    socket.reset();
    QTRY_COMPARE_WITH_TIMEOUT(peer->state(), QProcess::NotRunning, patience);
    QCOMPARE(peer->exitCode(), 0);
}

void TestPeerProcess::twoProcessesAtOnce()
{
    const auto first = startPeer();
    auto firstSocket = accepted();
    QVERIFY(firstSocket);
    const auto second = startPeer();
    auto secondSocket = accepted();
    QVERIFY(secondSocket);

    QVERIFY(first->processId() != second->processId());
    QCOMPARE(peerProcess(firstSocket->socketDescriptor()), std::optional<qint64>(first->processId()));
    QCOMPARE(peerProcess(secondSocket->socketDescriptor()), std::optional<qint64>(second->processId()));

    firstSocket.reset();
    secondSocket.reset();
    QTRY_COMPARE_WITH_TIMEOUT(first->state(), QProcess::NotRunning, patience);
    QTRY_COMPARE_WITH_TIMEOUT(second->state(), QProcess::NotRunning, patience);
}

void TestPeerProcess::thisProcess()
{
    QLocalSocket client;
    client.connectToServer(m_server->fullServerName());
    const auto socket = accepted();
    QVERIFY(socket);
    QCOMPARE(peerProcess(socket->socketDescriptor()),
             std::optional<qint64>(QCoreApplication::applicationPid()));
}

void TestPeerProcess::noSocket()
{
    QCOMPARE(peerProcess(-1), std::nullopt);
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == QStringLiteral("--connect"))
        return connectTo(arguments.at(2));
    TestPeerProcess test;
    return QTest::qExec(&test, argc, argv);
}

#include "test_peerprocess.moc"
