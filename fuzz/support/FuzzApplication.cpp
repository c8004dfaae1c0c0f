#include "FuzzApplication.h"

#include "FuzzTarget.h"

#include <ZEFBase.h>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

QStringList warnings;
QStringList debugLines;

//! Whether \a message is about what a machine lacks: a window system, fonts for every script, or, under Wine,
//! a call of Windows.
bool isOfTheMachine(const QString& message)
{
    return message.startsWith(QLatin1String("This plugin does not support"))
        || message.contains(QLatin1String("OpenType support missing"))
        || message.startsWith(QLatin1String("EnableNonClientDpiScaling() failed"));
}

void keep(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg) {
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
        std::abort();
    }
    if (isOfTheMachine(message))
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
