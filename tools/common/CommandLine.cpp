#include "CommandLine.h"

#include <ZEFUIVersion.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>
#include <QtCore/QFile>

using namespace Qt::StringLiterals;

std::optional<int> readCommandLine(const ToolDescription& tool, int argc, char** argv,
                                   QCommandLineParser* parser)
{
    // Only an application object knows the arguments as text on every platform.
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(tool.name);
    tool.addOptions(parser);
    if (!parser->parse(QCoreApplication::arguments())) {
        writeError(tool.name, parser->errorText());
        return cannotRunStatus;
    }
    if (parser->isSet(u"help"_s)) {
        writeText(stdout, parser->helpText().toUtf8());
        return 0;
    }
    if (parser->isSet(u"version"_s)) {
        writeText(stdout, (tool.name + u" " ZEFUI_VERSION_STRING "\n").toUtf8());
        return 0;
    }
    return std::nullopt;
}

void writeError(const QString& name, const QString& text)
{
    writeText(stderr, (name + u": " + text.simplified() + u'\n').toUtf8());
}

void writeText(FILE* stream, const QByteArray& text)
{
    QFile file;
    if (file.open(stream, QIODevice::WriteOnly))
        file.write(text);
}
