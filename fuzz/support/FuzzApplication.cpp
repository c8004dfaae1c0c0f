#include "FuzzApplication.h"

#include "FuzzTarget.h"

#include <ZEFBase.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

QStringList warnings;
QStringList debugLines;

void keep(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
        std::abort();
    }
    // Of what this machine lacks: a real window system, and fonts for every script.
    if (message.startsWith(QLatin1String("This plugin does not support"))
        || message.contains(QLatin1String("OpenType support missing")))
        return;
    QStringList& lines = type == QtDebugMsg ? debugLines : warnings;
    if (lines.size() < FuzzApplication::MaximumLines)
        lines.append(message);
}

//! In time for the application, which reads them when it is constructed.
int withEnvironment(int argc)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_LOGGING_RULES", "");
    return argc;
}

} // namespace

FuzzApplication::FuzzApplication()
    : m_argc(withEnvironment(1))
    , m_application(m_argc, m_argv)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    qInstallMessageHandler(keep);
    ZEFBase::setLogHandler([](const QString&) {});
}

FuzzApplication::~FuzzApplication()
{
    ZEFBase::setLogHandler({});
    qInstallMessageHandler(nullptr);
}

QStringList FuzzApplication::takeWarnings()
{
    return std::exchange(warnings, {});
}

QStringList FuzzApplication::takeDebugLines()
{
    return std::exchange(debugLines, {});
}

void FuzzApplication::requireSilence()
{
    const QStringList lines = takeWarnings();
    for (const QString& line : lines)
        std::fprintf(stderr, "warning: %s\n", line.toUtf8().constData());
    FUZZ_REQUIRE(lines.isEmpty());
}
