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
    if (parser->isSet(u"help"_s))
        return writeOutput(tool.name, parser->helpText().toUtf8()) ? 0 : cannotRunStatus;
    if (parser->isSet(u"version"_s)) {
        const QByteArray version = (tool.name + u" " ZEFUI_VERSION_STRING "\n").toUtf8();
        return writeOutput(tool.name, version) ? 0 : cannotRunStatus;
    }
    return std::nullopt;
}

void writeError(const QString& name, const QString& text)
{
    QFile file;
    if (file.open(stderr, QIODevice::WriteOnly))
        file.write((name + u": " + text.simplified() + u'\n').toUtf8());
}

bool writeOutput(const QString& name, const QByteArray& text)
{
    QFile file;
    if (file.open(stdout, QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush())
        return true;
    writeError(name, u"standard output: "_s + file.errorString());
    return false;
}
