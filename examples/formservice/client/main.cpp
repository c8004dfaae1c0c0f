#include "FormClient.h"

#include <platform/Utf8Console.h>

#include <protocol/FormAnswer.h>
#include <protocol/socketName.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTextStream>

#include <cstdio>

namespace {

// The exit codes; docs/form-service-protocol.md lists them.
enum ExitCode { Answered, BadUsage, ErrorAnswered, NoService, ConnectionLost, TimedOut };

int fail(ExitCode code, const QString& error)
{
    QTextStream(stderr) << "zefui-formclient: " << error << '\n';
    return code;
}

ExitCode exitCode(FormClient::Failure failure)
{
    switch (failure) {
    case FormClient::Failure::None:
        break;
    case FormClient::Failure::NoService:
        return NoService;
    case FormClient::Failure::ConnectionLost:
        return ConnectionLost;
    case FormClient::Failure::TimedOut:
        return TimedOut;
    }
    return Answered;
}

//! Sends the requests of \a input, one per line, and prints each answer as it comes.
int converse(QFile& input, FormClient& client, qint64 timeout)
{
    ExitCode result = Answered;
    // Not atEnd(), which says so of a terminal or a pipe that has no line ready yet.
    for (QByteArray line = input.readLine(); !line.isEmpty(); line = input.readLine()) {
        if (line.endsWith('\n'))
            line.chop(1);
        if (line.trimmed().isEmpty())
            continue;
        const std::optional<QByteArray> answer = client.ask(line, QDeadlineTimer(timeout));
        if (!answer)
            return fail(exitCode(client.failure()), client.errorText());
        fwrite(answer->constData(), 1, static_cast<size_t>(answer->size()), stdout);
        fflush(stdout);
        if (FormAnswer::isError(*answer))
            result = ErrorAnswered;
    }
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zefui-formclient"));

    const QCommandLineOption socket(QStringLiteral("socket"),
                                    QStringLiteral("The socket of the service, if not the user's own."),
                                    QStringLiteral("name"));
    const QCommandLineOption timeoutOption(
        QStringLiteral("timeout"), QStringLiteral("Wait so long for each answer; without it, for ever."),
        QStringLiteral("seconds"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Sends requests, one JSON object per line, and prints the answers."));
    parser.addHelpOption();
    parser.addOptions({socket, timeoutOption});
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QStringLiteral("The requests; without it they come from standard input."),
                                 QStringLiteral("[file]"));
    parser.process(application);
    const Utf8Console console;

    qint64 timeout = -1;
    if (parser.isSet(timeoutOption)) {
        bool isNumber = false;
        const int seconds = parser.value(timeoutOption).toInt(&isNumber);
        if (!isNumber || seconds < 0)
            return fail(BadUsage, QStringLiteral("--timeout takes a number of seconds"));
        timeout = qint64(seconds) * 1000;
    }

    QFile input;
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() > 1)
        return fail(BadUsage, QStringLiteral("one file of requests at most"));
    if (arguments.isEmpty()) {
        if (!input.open(stdin, QIODevice::ReadOnly))
            return fail(BadUsage, QStringLiteral("cannot read standard input"));
    } else {
        input.setFileName(arguments.first());
        if (!input.open(QIODevice::ReadOnly))
            return fail(BadUsage, u"cannot read " + arguments.first() + u": " + input.errorString());
    }

    FormClient client;
    if (!client.connectTo(parser.isSet(socket) ? parser.value(socket) : defaultSocketName(),
                          QDeadlineTimer(timeout)))
        return fail(NoService, client.errorText());
    return converse(input, client, timeout);
}
