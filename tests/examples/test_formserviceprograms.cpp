// The two programs as a user runs them: real processes, real sockets.

#include "ProgramsTest.h"

#include <protocol/LineSplitter.h>

#include <QtNetwork/QLocalSocket>

#include <memory>
#include <vector>

namespace {

constexpr const char* quickScript = R"({
    "signin": [{"type": "anna", "into": "user"}, {"type": "s3cret", "into": "password"}, {"press": "Return"}],
    "activation": [{"click": "laterButton"}],
    "confirmation": [{"click": "okButton"}]})";
const QByteArray signIn = R"({"form": "signin", "return": ["user.text"]})";
const QByteArray formMissing = "{\"error\":\"\\\"form\\\" is missing\"}\n";
const QByteArray signedIn = R"({"selection":1,"values":{"user.text":"anna"}})";

} // namespace

class FormServiceProgramsTest : public ProgramsTest {
    Q_OBJECT

private Q_SLOTS:
    void answersFromStandardInput();
    void answersFromAFile();
    void badInputLeavesTheServiceAlive_data();
    void badInputLeavesTheServiceAlive();
    void malformedJsonLeavesTheServiceAlive();
    void aTooLongLineIsAnErrorInItsPlace();
    void halfALineIsForgotten();
    void servesTwentyClientsAtOnce();
    void servesAThousandRequestsInARow();
    void servesRequestsSentAheadInOrder();
    void survivesTooManyWaitingRequests();
    void sendsAwayAClientThatDoesNotRead();
    void theClientNoticesThatTheServiceDies();
    void theClientGivesUpInTime();
    void theClientReportsAMissingService();
    void theClientRefusesBadUsage_data();
    void theClientRefusesBadUsage();
    void theSocketIsPrivate();
    void aSecondServiceIsRefused();
    void aSocketLeftBehindIsReplaced();
    void anotherFileIsNotReplaced();
    void badScriptsAreRefused_data();
    void badScriptsAreRefused();
    void aScriptThatCannotGoOnClosesTheForm();
    void passwordsStayOutOfTheLog();
};

void FormServiceProgramsTest::answersFromStandardInput()
{
    startService(quickScript);
    int exitCode = -1;
    QCOMPARE(ask(signIn
                     + "\n\n"
                       R"({"form": "activation"})",
                 &exitCode),
             signedIn
                 + "\n"
                   R"({"selection":3,"values":{}})"
                   "\n");
    QCOMPARE(exitCode, 0);
}

void FormServiceProgramsTest::answersFromAFile()
{
    startService(quickScript);
    const auto client = startClient({write("requests", signIn + '\n')});
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->readAllStandardOutput(), signedIn + '\n');
    QCOMPARE(client->exitCode(), 0);
}

void FormServiceProgramsTest::badInputLeavesTheServiceAlive_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("error");
    const auto row = [](const char* name, const QByteArray& line, const QByteArray& error) {
        QTest::newRow(name) << line << "{\"error\":\"" + error + "\"}";
    };
    const QByteArray longName(10'000, 'x');
    row("no object", "[1]", "a request must be a JSON object");
    row("wrong type", R"({"form": ["signin"]})", R"(\"form\" must be a text)");
    row("unknown form", R"({"form": "sign-in"})", "unknown form: sign-in");
    row("slashes", R"({"form": "../forms/signin"})",
        R"(\"form\" must be a name, not a path: \"../forms/signin\")");
    row("dots", R"({"form": ".."})", "unknown form: ..");
    row("spaces", R"({"form": " signin "})", "unknown form:  signin ");
    row("percent signs", R"({"form": "%s%n%1"})", "unknown form: %s%n%1");
    row("long name", "{\"form\": \"" + longName + "\"}", "unknown form: " + longName.left(60));
    row("line feed in a name", R"({"form": "a\nb"})", R"(unknown form: a\nb)");
    row("zero byte in a name", R"({"form": "signin\u0000"})", R"(unknown form: signin\u0000)");
}

void FormServiceProgramsTest::badInputLeavesTheServiceAlive()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, error);
    startService(quickScript);
    int exitCode = -1;
    QCOMPARE(ask(line + '\n' + signIn + '\n', &exitCode), error + '\n' + signedIn + '\n');
    QCOMPARE(exitCode, 2);
}

void FormServiceProgramsTest::malformedJsonLeavesTheServiceAlive()
{
    startService(quickScript);
    int exitCode = -1;
    const QByteArrayList lines = ask("hello\n" + signIn + '\n', &exitCode).split('\n');
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines.at(0).startsWith(R"({"error":"not JSON: )"), lines.at(0).constData());
    QCOMPARE(lines.at(1), signedIn);
    QCOMPARE(exitCode, 2);
}

void FormServiceProgramsTest::aTooLongLineIsAnErrorInItsPlace()
{
    startService(quickScript);
    const QByteArray tooLong(LineSplitter::MaximumLineLength + 1, 'x');
    QCOMPARE(ask(signIn + '\n' + tooLong + '\n' + signIn),
             signedIn
                 + "\n"
                   R"({"error":"a line is longer than 1 MiB"})"
                   "\n"
                 + signedIn + '\n');
}

void FormServiceProgramsTest::halfALineIsForgotten()
{
    startService(quickScript);
    QLocalSocket socket;
    socket.connectToServer(path("socket"));
    QVERIFY(socket.waitForConnected(patience));
    socket.write(signIn.left(20));
    QVERIFY(socket.waitForBytesWritten(patience));
    socket.disconnectFromServer();
    QCOMPARE(ask(signIn), signedIn + '\n');
}

void FormServiceProgramsTest::servesTwentyClientsAtOnce()
{
    // No script: every form stays open until its client goes.
    startService();
    std::vector<std::unique_ptr<QLocalSocket>> open;
    for (int i = 0; i < 20; ++i) {
        open.push_back(std::make_unique<QLocalSocket>());
        open.back()->connectToServer(path("socket"));
        QVERIFY(open.back()->waitForConnected(patience));
        open.back()->write(signIn + '\n');
    }
    std::vector<std::unique_ptr<QProcess>> clients;
    for (int i = 0; i < 20; ++i) {
        clients.push_back(startClient());
        clients.back()->write("{\"form\": \"none " + QByteArray::number(i) + "\"}\n");
        clients.back()->closeWriteChannel();
    }
    for (int i = 0; i < 20; ++i) {
        QProcess& client = *clients.at(static_cast<size_t>(i));
        QVERIFY(client.waitForFinished(patience));
        QCOMPARE(client.readAllStandardOutput(),
                 "{\"error\":\"unknown form: none " + QByteArray::number(i) + "\"}\n");
    }
    for (const auto& socket : open)
        QCOMPARE(socket->state(), QLocalSocket::ConnectedState);
}

void FormServiceProgramsTest::servesAThousandRequestsInARow()
{
    startService(R"({"confirmation": [{"click": "okButton"}]})");
    QByteArray requests;
    QByteArray answers;
    for (int i = 0; i < 1000; ++i) {
        const QByteArray number = QByteArray::number(i);
        requests += R"({"form": "confirmation", "set": {"questionLabel_text": "n)" + number
            + R"("}, "return": ["questionLabel.text"]})"
              "\n";
        answers += R"({"selection":1,"values":{"questionLabel.text":"n)" + number + "\"}}\n";
    }
    QCOMPARE(ask(requests), answers);
    QCOMPARE(m_service->state(), QProcess::Running);
}

void FormServiceProgramsTest::servesRequestsSentAheadInOrder()
{
    startService(quickScript);
    QLocalSocket socket;
    socket.connectToServer(path("socket"));
    QVERIFY(socket.waitForConnected(patience));
    socket.write(signIn + "\n{}\n"
                 + R"({"form": "activation"})"
                   "\n"
                 + signIn + '\n');
    QByteArray answers;
    while (answers.count('\n') < 4 && socket.waitForReadyRead(patience))
        answers += socket.readAll();
    const QByteArray postponed = R"({"selection":3,"values":{}})";
    QCOMPARE(answers, signedIn + '\n' + formMissing + postponed + '\n' + signedIn + '\n');
}

void FormServiceProgramsTest::survivesTooManyWaitingRequests()
{
    startService();
    QLocalSocket socket;
    socket.connectToServer(path("socket"));
    QVERIFY(socket.waitForConnected(patience));
    socket.write(signIn + '\n');
    const QByteArray waiting = QByteArray(LineSplitter::MaximumLineLength, ' ') + '\n';
    for (int i = 0; i < 17; ++i)
        socket.write(waiting);
    while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(patience)) { }
    if (socket.state() != QLocalSocket::UnconnectedState)
        QVERIFY(socket.waitForDisconnected(patience));
    // Whether the answer arrived depends on what the client was still writing.
    QCOMPARE(ask("{}"), formMissing);
}

void FormServiceProgramsTest::sendsAwayAClientThatDoesNotRead()
{
    startService();
    QLocalSocket socket;
    socket.setReadBufferSize(1);
    socket.connectToServer(path("socket"));
    QVERIFY(socket.waitForConnected(patience));
    // The answer to each quotes its name.
    const QByteArray request = "{\"form\": \"/" + QByteArray(500, 'x') + "\"}\n";
    QDeadlineTimer deadline(patience);
    while (socket.state() == QLocalSocket::ConnectedState && !deadline.hasExpired()) {
        for (int i = 0; i < 1000; ++i)
            socket.write(request);
        while (socket.bytesToWrite() > 0 && socket.waitForBytesWritten(patience)) { }
    }
    QVERIFY(!deadline.hasExpired());
    QCOMPARE(ask("{}"), formMissing);
}

void FormServiceProgramsTest::theClientNoticesThatTheServiceDies()
{
    startService();
    const auto client = startClient();
    client->write("{}\n" + signIn + '\n');
    // The first answer shows that the client is in conversation.
    QVERIFY(client->waitForReadyRead(patience));
    m_service->kill();
    QVERIFY(m_service->waitForFinished(patience));
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 4);
    QCOMPARE(client->readAllStandardError(),
             QByteArray("zefui-formclient: the service went away before it answered\n"));
}

void FormServiceProgramsTest::theClientGivesUpInTime()
{
    startService();
    const auto client = startClient({QStringLiteral("--timeout"), QStringLiteral("1")});
    client->write(signIn + '\n');
    client->closeWriteChannel();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 5);
    QCOMPARE(client->readAllStandardError(),
             QByteArray("zefui-formclient: the service did not answer in time\n"));
}

void FormServiceProgramsTest::theClientReportsAMissingService()
{
    const auto client = startClient();
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 3);
    const QByteArray error = client->readAllStandardError();
    const QByteArray expected = "zefui-formclient: no service on " + path("socket").toUtf8() + ": ";
    QVERIFY2(error.startsWith(expected), error.constData());
    QCOMPARE(error.count('\n'), 1);
}

void FormServiceProgramsTest::theClientRefusesBadUsage_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("timeout without a number")
        << QStringList{QStringLiteral("--timeout"), QStringLiteral("soon")}
        << QByteArray("zefui-formclient: --timeout takes a number of seconds\n");
    QTest::newRow("two files") << QStringList{QStringLiteral("a"), QStringLiteral("b")}
                               << QByteArray("zefui-formclient: one file of requests at most\n");
    QTest::newRow("a file that is not there")
        << QStringList{QStringLiteral("/nowhere/x")}
        << QByteArray("zefui-formclient: cannot read /nowhere/x: No such file or directory\n");
}

void FormServiceProgramsTest::theClientRefusesBadUsage()
{
    QFETCH(const QStringList, arguments);
    const auto client = startClient(arguments);
    QVERIFY(client->waitForFinished(patience));
    QCOMPARE(client->exitCode(), 1);
    QTEST(client->readAllStandardError(), "error");
}

void FormServiceProgramsTest::theSocketIsPrivate()
{
    startService();
    const QFile::Permissions others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    QVERIFY(QFile::exists(path("socket")));
    QVERIFY(!(QFile::permissions(path("socket")) & others));
}

void FormServiceProgramsTest::aSecondServiceIsRefused()
{
    startService(quickScript);
    const auto second = run(SERVICE_PROGRAM, {});
    QVERIFY(second->waitForFinished(patience));
    QCOMPARE(second->exitCode(), 1);
    const QByteArray expected = "a service is already listening on " + path("socket").toUtf8();
    QVERIFY(second->readAllStandardError().contains(expected));
    QCOMPARE(ask(signIn), signedIn + '\n');
}

void FormServiceProgramsTest::aSocketLeftBehindIsReplaced()
{
    startService();
    m_service->kill();
    QVERIFY(m_service->waitForFinished(patience));
    QVERIFY(QFile::exists(path("socket")));
    startService(quickScript);
    QCOMPARE(ask(signIn), signedIn + '\n');
}

void FormServiceProgramsTest::anotherFileIsNotReplaced()
{
    write("socket", "precious");
    const auto service = run(SERVICE_PROGRAM, {});
    QVERIFY(service->waitForFinished(patience));
    QCOMPARE(service->exitCode(), 1);
    QVERIFY(service->readAllStandardError().contains("exists and is not a socket"));
    QFile file(path("socket"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("precious"));
}

void FormServiceProgramsTest::badScriptsAreRefused_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("no JSON") << QByteArray("{") << QByteArray("is not JSON");
    QTest::newRow("unknown step") << QByteArray(R"({"signin": [{"jump": "up"}]})")
                                  << QByteArray("has an unknown step for the form signin");
    QTest::newRow("unknown key") << QByteArray(R"({"signin": [{"press": ""}]})")
                                 << QByteArray("has an unknown step for the form signin");
}

void FormServiceProgramsTest::badScriptsAreRefused()
{
    QFETCH(const QByteArray, script);
    QFETCH(const QByteArray, error);
    const auto service = run(SERVICE_PROGRAM, {QStringLiteral("--script"), write("script", script)});
    QVERIFY(service->waitForFinished(patience));
    QCOMPARE(service->exitCode(), 1);
    QVERIFY(service->readAllStandardError().contains(error));
}

void FormServiceProgramsTest::aScriptThatCannotGoOnClosesTheForm()
{
    startService(R"({"signin": [{"click": "nobody"}]})");
    QCOMPARE(ask(signIn),
             QByteArray(R"({"selection":0,"values":{"user.text":""}})"
                        "\n"));
    QVERIFY(log().contains("script: form signin: there is no usable widget nobody"));
}

void FormServiceProgramsTest::passwordsStayOutOfTheLog()
{
    startService(quickScript);
    QCOMPARE(ask(signIn), signedIn + '\n');
    m_service->terminate();
    QVERIFY(m_service->waitForFinished(patience));
    QVERIFY(!log().contains("s3cret"));
}

ZEF_TEST_MAIN(FormServiceProgramsTest)
#include "test_formserviceprograms.moc"
