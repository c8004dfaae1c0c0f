// The form service under load, and when clients, bytes and the service itself fail. ZEFUI_SERVICE_LOAD=full
// runs many more clients and requests.

#include "ProgramsTest.h"

#include <protocol/LineSplitter.h>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonDocument>
#include <QtCore/QRandomGenerator>
#include <QtCore/QStringDecoder>
#include <QtNetwork/QLocalSocket>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

constexpr const char* clickingScript = R"({"confirmation": [{"click": "okButton"}]})";
const QByteArray confirmation = R"({"form": "confirmation"})";
const QByteArray confirmed = R"({"selection":1,"values":{}})";

// Qt waits three times as long before it says that a condition never came.
constexpr int shortPatience = 60'000; // milliseconds

struct Load {
    int clients;
    int requests;
};

Load wantedLoad()
{
    return qgetenv("ZEFUI_SERVICE_LOAD") == "full" ? Load{50, 200} : Load{10, 20};
}

//! Resident memory of a process in bytes; 0 where the system does not say.
qint64 residentMemory(qint64 process)
{
    QFile statm(QStringLiteral("/proc/%1/statm").arg(process));
    if (!statm.open(QIODevice::ReadOnly))
        return 0;
    return statm.readAll().split(' ').value(1).toLongLong() * 4096;
}

QFileInfoList openFiles(qint64 process)
{
    return QDir(QStringLiteral("/proc/%1/fd").arg(process)).entryInfoList(QDir::Files | QDir::System);
}

//! The connections of a process, and what it listens on.
qsizetype openSockets(qint64 process)
{
    const QFileInfoList files = openFiles(process);
    return std::count_if(files.begin(), files.end(), [](const QFileInfo& file) {
        return file.symLinkTarget().contains(QLatin1String("socket:"));
    });
}

QByteArray request(int client, int number)
{
    return R"({"form": "confirmation", "set": {"questionLabel_text": ")" + QByteArray::number(client) + '/'
        + QByteArray::number(number)
        + R"("}, "return": ["questionLabel.text"]})"
          "\n";
}

QByteArray answer(int client, int number)
{
    return R"({"selection":1,"values":{"questionLabel.text":")" + QByteArray::number(client) + '/'
        + QByteArray::number(number) + "\"}}\n";
}

} // namespace

class FormServiceFaultsTest : public ProgramsTest {
    Q_OBJECT

private Q_SLOTS:
    void servesManyClientsAtOnce();
    void survivesKilledClients();
    void aSilentClientDisturbsNobody();
    void halfALineAndNoMore();
    void anEndlessLineTakesNoMemory();
    void oddBytesAreAnswered_data();
    void oddBytesAreAnswered();
    void clientsNoticeAKilledService();
    void clientsThatSendNoticeAKilledService();
    void everyClientEndsWhileTheServiceComesAndGoes();
    void aDeadSocketIsNoService();
    void ofServicesStartedTogetherOneServes();
    void aLockLeftBehindIsReplaced();

private:
    void converse(int clients, int requests);
    std::unique_ptr<QLocalSocket> connectSocket() const;
    void killService();
};

//! Runs so many clients at the same time, each with so many requests, and checks every answer.
void FormServiceFaultsTest::converse(int clients, int requests)
{
    std::vector<std::unique_ptr<QProcess>> running;
    for (int i = 0; i < clients; ++i) {
        QByteArray lines;
        for (int k = 0; k < requests; ++k)
            lines += request(i, k);
        const QByteArray name = "requests" + QByteArray::number(i);
        running.push_back(startClient({write(name.constData(), lines)}));
    }
    for (int i = 0; i < clients; ++i) {
        QProcess& client = *running.at(static_cast<size_t>(i));
        while (client.state() != QProcess::NotRunning && client.waitForReadyRead(patience)) { }
        QVERIFY(client.state() == QProcess::NotRunning || client.waitForFinished(patience));
        QByteArray answers;
        for (int k = 0; k < requests; ++k)
            answers += answer(i, k);
        QCOMPARE(client.readAllStandardError(), QByteArray());
        QCOMPARE(client.readAllStandardOutput(), answers);
        QCOMPARE(client.exitCode(), 0);
    }
}

std::unique_ptr<QLocalSocket> FormServiceFaultsTest::connectSocket() const
{
    auto socket = std::make_unique<QLocalSocket>();
    socket->connectToServer(path("socket"));
    if (!socket->waitForConnected(patience))
        qWarning("cannot connect");
    return socket;
}

void FormServiceFaultsTest::killService()
{
    m_service->kill();
    QVERIFY(m_service->waitForFinished(patience));
}

void FormServiceFaultsTest::servesManyClientsAtOnce()
{
    const Load load = wantedLoad();
    startService(clickingScript);
    const qint64 process = m_service->processId();
    const qsizetype socketsBefore = openSockets(process);
    // What the service keeps for later it has by then.
    converse(load.clients, load.requests / 2);
    QTRY_COMPARE_WITH_TIMEOUT(openSockets(process), socketsBefore, shortPatience);
    const qint64 memoryBefore = residentMemory(process);
    const qsizetype filesBefore = openFiles(process).size();
    converse(load.clients, load.requests);
    if (memoryBefore == 0)
        QSKIP("This system does not tell the resident memory");
    QTRY_COMPARE_WITH_TIMEOUT(openSockets(process), socketsBefore, shortPatience);
    QCOMPARE(openFiles(process).size(), filesBefore);
    const qint64 memoryAfter = residentMemory(process);
    qInfo("%d clients, %d requests each: resident %lld KiB before, %lld KiB after; %lld files before, %lld "
          "after",
          load.clients, load.requests, memoryBefore / 1024, memoryAfter / 1024, qint64(filesBefore),
          qint64(openFiles(process).size()));
    for (const QString& line : TestLog::take(QStringLiteral("info: ")))
        fprintf(stderr, "%s\n", qUtf8Printable(line));
#if !defined(__SANITIZE_ADDRESS__)
    QVERIFY2(memoryAfter - memoryBefore < memoryBefore / 20,
             qPrintable(QStringLiteral("%1 bytes more").arg(memoryAfter - memoryBefore)));
#endif
}

void FormServiceFaultsTest::survivesKilledClients()
{
    const Load load = wantedLoad();
    startService(clickingScript);
    const qint64 process = m_service->processId();
    const qsizetype socketsBefore = openSockets(process);
    QRandomGenerator random(1);
    std::vector<std::unique_ptr<QProcess>> clients;
    std::vector<std::unique_ptr<QLocalSocket>> sockets;
    for (int i = 0; i < load.clients; ++i) {
        // Nobody fills in this form: it stays open until its client dies.
        clients.push_back(startClient());
        clients.back()->write((random.bounded(2) == 0 ? QByteArray() : request(i, 0))
                              + "{\"form\": \"signin\"}\n");
        // In the middle of a line, with a form open or without.
        sockets.push_back(connectSocket());
        if (random.bounded(2) == 0)
            sockets.back()->write("{\"form\": \"signin\"}\n");
        sockets.back()->write(request(i, 1).left(1 + random.bounded(60)));
        sockets.back()->flush();
        if (random.bounded(2) == 0) {
            const size_t victim = random.bounded(static_cast<quint32>(clients.size()));
            clients.at(victim)->kill();
        }
        if (random.bounded(2) == 0)
            sockets.at(random.bounded(static_cast<quint32>(sockets.size())))->abort();
    }
    for (const auto& client : clients) {
        client->kill();
        QVERIFY(client->waitForFinished(patience));
    }
    sockets.clear();
    QTRY_COMPARE_WITH_TIMEOUT(openSockets(process), socketsBefore, shortPatience);
    QCOMPARE(m_service->state(), QProcess::Running);
    converse(3, 3);
}

void FormServiceFaultsTest::aSilentClientDisturbsNobody()
{
    startService(clickingScript);
    const auto nothing = connectSocket();
    const auto half = connectSocket();
    half->write(confirmation.left(9));
    QVERIFY(half->waitForBytesWritten(patience));
    converse(3, 3);
    // Its time has not run out.
    half->write(confirmation.mid(9) + '\n');
    while (!half->canReadLine())
        QVERIFY(half->waitForReadyRead(patience));
    QCOMPARE(half->readLine(), confirmed + '\n');
    QCOMPARE(nothing->state(), QLocalSocket::ConnectedState);
}

void FormServiceFaultsTest::halfALineAndNoMore()
{
    startService(clickingScript);
    const qsizetype socketsBefore = openSockets(m_service->processId());
    for (int length = 1; length < confirmation.size(); ++length) {
        const auto socket = connectSocket();
        socket->write(confirmation + '\n' + confirmation.left(length));
        QVERIFY(socket->waitForBytesWritten(patience));
        socket->disconnectFromServer();
    }
    QTRY_COMPARE_WITH_TIMEOUT(openSockets(m_service->processId()), socketsBefore, shortPatience);
    QCOMPARE(ask(confirmation), confirmed + '\n');
}

void FormServiceFaultsTest::anEndlessLineTakesNoMemory()
{
    startService(clickingScript);
    QCOMPARE(ask(confirmation), confirmed + '\n');
    const qint64 before = residentMemory(m_service->processId());
    const auto socket = connectSocket();
    const QByteArray megabyte(1024 * 1024, 'x');
    for (int i = 0; i < 64; ++i) {
        socket->write(megabyte);
        while (socket->bytesToWrite() > 0)
            QVERIFY(socket->waitForBytesWritten(patience));
    }
    socket->write("\n" + confirmation + '\n');
    QByteArray answers;
    while (answers.count('\n') < 2) {
        QVERIFY(socket->bytesAvailable() > 0 || socket->waitForReadyRead(patience));
        answers += socket->readAll();
    }
    QCOMPARE(answers, "{\"error\":\"a line is longer than 1 MiB\"}\n" + confirmed + '\n');
#if !defined(__SANITIZE_ADDRESS__)
    QVERIFY(residentMemory(m_service->processId()) - before < 16 * megabyte.size());
#endif
}

void FormServiceFaultsTest::oddBytesAreAnswered_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no UTF-8 at all") << QByteArray("\xff\xfe\xfd");
    QTest::newRow("in a name") << QByteArray("{\"form\": \"a\xff\"}");
    QTest::newRow("in a key") << QByteArray("{\"form\xc3\": \"confirmation\"}");
    QTest::newRow("in a value") << QByteArray("{\"form\": \"confirmation\", \"title\": \"\xe2\x82\"}");
    QTest::newRow("overlong slash") << QByteArray("{\"form\": \"..\xc0\xaf..\"}");
    QTest::newRow("encoded surrogate") << QByteArray("{\"form\": \"\xed\xa0\x80\"}");
    QTest::newRow("escaped surrogate") << QByteArray("{\"form\": \"\\ud800\"}");
    QTest::newRow("escaped surrogate in a title")
        << QByteArray("{\"form\": \"confirmation\", \"title\": \"\\udc00\"}");
    QTest::newRow("cut at the end") << QByteArray("{\"form\": \"\xf0\x9f\x98");
    QTest::newRow("zero bytes") << QByteArray("{\"form\": \"a\0b\"}\0\0", 17);
    QTest::newRow("a byte order mark") << QByteArray("\xef\xbb\xbf{\"form\": \"confirmation\"}");
    QTest::newRow("UTF-16") << QByteArray("\xff\xfe{\0\"\0f\0", 8);
    QTest::newRow("deep nesting") << QByteArray(500'000, '[');
    QTest::newRow("every byte") << [] {
        QByteArray bytes;
        for (int byte = 0; byte < 256; ++byte) {
            if (byte != '\n')
                bytes.append(static_cast<char>(byte));
        }
        return bytes;
    }();
}

void FormServiceFaultsTest::oddBytesAreAnswered()
{
    QFETCH(const QByteArray, line);
    startService(clickingScript);
    const auto socket = connectSocket();
    socket->write(line + '\n' + confirmation + '\n');
    QByteArray answers;
    while (answers.count('\n') < 2) {
        QVERIFY(socket->bytesAvailable() > 0 || socket->waitForReadyRead(patience));
        answers += socket->readAll();
    }
    const QByteArrayList lines = answers.split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(QJsonDocument::fromJson(lines.at(0)).isObject(), lines.at(0).constData());
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(lines.at(0));
    QVERIFY2(!decoder.hasError(), lines.at(0).constData());
    QVERIFY(!text.isEmpty());
    QCOMPARE(lines.at(1), confirmed);
}

void FormServiceFaultsTest::clientsNoticeAKilledService()
{
    startService(clickingScript);
    std::vector<std::unique_ptr<QProcess>> clients;
    for (int i = 0; i < wantedLoad().clients; ++i) {
        clients.push_back(startClient());
        clients.back()->write(confirmation + "\n{\"form\": \"signin\"}\n");
    }
    // The first answer shows that the client is in conversation; its second form stays open.
    for (const auto& client : clients)
        QVERIFY(client->bytesAvailable() > 0 || client->waitForReadyRead(patience));
    killService();
    for (const auto& client : clients) {
        QVERIFY(client->waitForFinished(patience));
        QCOMPARE(client->readAllStandardOutput(), confirmed + '\n');
        QCOMPARE(client->readAllStandardError(),
                 QByteArray("zefui-formclient: the service went away before it answered\n"));
        QCOMPARE(client->exitCode(), 4);
    }
    startService(clickingScript);
    converse(3, 3);
}

void FormServiceFaultsTest::clientsThatSendNoticeAKilledService()
{
    startService();
    // Far more than a socket holds, behind a form that stays open.
    const QByteArray large = "{\"title\": \"" + QByteArray(900'000, 'x') + "\", \"form\": \"signin\"}\n";
    std::vector<std::unique_ptr<QProcess>> clients;
    for (int i = 0; i < 5; ++i) {
        clients.push_back(startClient());
        clients.back()->write("{}\n" + large);
    }
    for (const auto& client : clients)
        QVERIFY(client->bytesAvailable() > 0 || client->waitForReadyRead(patience));
    killService();
    for (const auto& client : clients) {
        QVERIFY(client->waitForFinished(patience));
        QCOMPARE(client->readAllStandardError(),
                 QByteArray("zefui-formclient: the service went away before it answered\n"));
        QCOMPARE(client->exitCode(), 4);
    }
}

void FormServiceFaultsTest::everyClientEndsWhileTheServiceComesAndGoes()
{
    const int rounds = wantedLoad().clients / 5;
    std::vector<std::unique_ptr<QProcess>> clients;
    QByteArray lines;
    for (int k = 0; k < 20; ++k)
        lines += request(0, k);
    const QString file = write("requests", lines);
    for (int round = 0; round < rounds; ++round) {
        startService(clickingScript);
        for (int i = 0; i < 5; ++i)
            clients.push_back(startClient({file}));
        // One of them has got an answer; the others may not even be connected.
        QProcess& one = *clients.at(clients.size() - 1 - static_cast<size_t>(round % 5));
        QVERIFY(one.bytesAvailable() > 0 || one.waitForReadyRead(patience));
        killService();
        clients.push_back(startClient({file}));
    }
    startService(clickingScript);
    for (const auto& client : clients) {
        while (client->state() != QProcess::NotRunning && client->waitForReadyRead(patience)) { }
        QVERIFY(client->state() == QProcess::NotRunning || client->waitForFinished(patience));
        QCOMPARE(client->exitStatus(), QProcess::NormalExit);
        const QByteArray error = client->readAllStandardError();
        const int code = client->exitCode();
        QVERIFY2(code == 0 || code == 3 || code == 4, error.constData());
        QCOMPARE(error.count('\n'), code == 0 ? 0 : 1);
        const QByteArray expected = code == 0 ? QByteArray()
            : code == 3                       ? "zefui-formclient: no service on " + path("socket").toUtf8()
                                              : QByteArray("zefui-formclient: the service went away");
        QVERIFY2(error.startsWith(expected), error.constData());
    }
    converse(3, 3);
}

void FormServiceFaultsTest::aDeadSocketIsNoService()
{
    startService();
    killService();
    QVERIFY(QFile::exists(path("socket")));
    const auto client = startClient();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 3);
    const QByteArray error = client->readAllStandardError();
    const QByteArray expected = "zefui-formclient: no service on " + path("socket").toUtf8() + ": ";
    QVERIFY2(error.startsWith(expected), error.constData());
    QCOMPARE(error.count('\n'), 1);
}

void FormServiceFaultsTest::ofServicesStartedTogetherOneServes()
{
    const QString script = write("script", clickingScript);
    const QByteArray refused = "a service is already listening on " + path("socket").toUtf8();
    for (int round = 0; round < 5; ++round) {
        std::vector<std::unique_ptr<QProcess>> services;
        for (int i = 0; i < 4; ++i)
            services.push_back(run(SERVICE_PROGRAM, {QStringLiteral("--script"), script}));
        const auto running = [&] {
            return std::count_if(services.begin(), services.end(), [](const auto& service) {
                return service->state() != QProcess::NotRunning;
            });
        };
        QTRY_COMPARE_WITH_TIMEOUT(running(), 1, patience);
        for (const auto& service : services) {
            if (service->state() != QProcess::NotRunning) {
                QVERIFY(service->bytesAvailable() > 0 || service->waitForReadyRead(patience));
                QCOMPARE(service->readLine(), "listening on " + path("socket").toUtf8() + '\n');
                continue;
            }
            QCOMPARE(service->exitCode(), 1);
            QCOMPARE(service->readAllStandardOutput(), QByteArray());
            QVERIFY(service->readAllStandardError().contains(refused));
        }
        converse(2, 2);
        for (const auto& service : services) {
            if (service->state() == QProcess::NotRunning)
                continue;
            service->kill(); // leaves everything behind for the next round
            QVERIFY(service->waitForFinished(patience));
        }
    }
}

void FormServiceFaultsTest::aLockLeftBehindIsReplaced()
{
    startService();
    killService();
    QVERIFY(QFile::exists(path("socket.lock")));
    startService(clickingScript);
    QCOMPARE(ask(confirmation), confirmed + '\n');
}

ZEF_TEST_MAIN(FormServiceFaultsTest)
#include "test_formservicefaults.moc"
