#include "FormService.h"
#include "ScriptPlayer.h"

#include <protocol/socketName.h>

#include <QtCore/QCommandLineParser>
#include <QtCore/QLoggingCategory>
#include <QtCore/QTextStream>
#include <QtWidgets/QApplication>

namespace {

int fail(const QString& error)
{
    QTextStream(stderr) << "zefui-formservice: " << error << '\n';
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("zefui-formservice"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStringLiteral("Fusion"));

    const QCommandLineOption socket(QStringLiteral("socket"),
                                    QStringLiteral("Listen on this socket instead of the user's own."),
                                    QStringLiteral("name"));
    const QCommandLineOption scriptFile(QStringLiteral("script"),
                                        QStringLiteral("Fill in every form as this file says."),
                                        QStringLiteral("file"));
    const QCommandLineOption screenshots(QStringLiteral("screenshots"),
                                         QStringLiteral("Where the script's screenshots go."),
                                         QStringLiteral("folder"), QStringLiteral("."));
    const QCommandLineOption verbose(
        QStringLiteral("verbose"),
        QStringLiteral("Log what the library does; that includes what users enter."));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Shows forms on behalf of the clients on a local socket."));
    parser.addHelpOption();
    parser.addOptions({socket, scriptFile, screenshots, verbose});
    parser.process(application);

    // The library's debug lines hold the values of the forms, passwords included.
    if (!parser.isSet(verbose))
        QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));

    if (parser.isSet(scriptFile)) {
        QString error;
        const Script script = Script::fromFile(parser.value(scriptFile), &error);
        if (!error.isEmpty())
            return fail(error);
        new ScriptPlayer(script, parser.value(screenshots), &application);
    }

    const QString name = parser.isSet(socket) ? parser.value(socket) : defaultSocketName();
    FormService service;
    if (!service.listen(name))
        return fail(service.errorString());
    QTextStream(stdout) << "listening on " << name << '\n' << Qt::flush;
    return QApplication::exec();
}
