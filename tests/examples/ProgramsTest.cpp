#include "ProgramsTest.h"

#include <QtCore/QFile>

void ProgramsTest::prepare()
{
    m_folder = std::make_unique<QTemporaryDir>();
}

void ProgramsTest::tidyUp()
{
    if (m_service && m_service->state() == QProcess::Running) {
        m_service->terminate();
        m_service->waitForFinished(patience);
    }
    m_service.reset();
    m_folder.reset();
}

QString ProgramsTest::write(const char* name, const QByteArray& content) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qWarning("cannot write a file of the test");
    return file.fileName();
}

std::unique_ptr<QProcess> ProgramsTest::run(const char* program, const QStringList& arguments,
                                            const QString& logFile) const
{
    auto process = std::make_unique<QProcess>();
    // Not a pipe, which would be full before anybody reads it.
    process->setStandardErrorFile(logFile);
    process->start(QString::fromUtf8(program),
                   QStringList{QStringLiteral("--socket"), path("socket")} + arguments);
    return process;
}

QByteArray ProgramsTest::log() const
{
    QFile file(path("log"));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no log");
}

void ProgramsTest::startService(const QByteArray& script)
{
    QStringList arguments;
    if (!script.isEmpty())
        arguments = {QStringLiteral("--script"), write("script", script)};
    m_service = run(SERVICE_PROGRAM, arguments, path("log"));
    QVERIFY(m_service->waitForReadyRead(patience));
    QCOMPARE(m_service->readLine(), "listening on " + path("socket").toUtf8() + '\n');
}

std::unique_ptr<QProcess> ProgramsTest::startClient(const QStringList& arguments) const
{
    return run(CLIENT_PROGRAM, arguments);
}

QByteArray ProgramsTest::ask(const QByteArray& input, int* exitCode) const
{
    const auto client = startClient();
    client->write(input);
    client->closeWriteChannel();
    if (!client->waitForFinished(patience))
        return "the client hangs";
    if (exitCode)
        *exitCode = client->exitCode();
    return client->readAllStandardOutput();
}
