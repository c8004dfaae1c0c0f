#include "TestLog.h"

#include <ZEFBase.h>

#include <QtCore/QList>
#include <QtCore/QMutex>

#include <algorithm>

namespace {

QtMessageHandler previousHandler = nullptr;

struct State {
    QMutex mutex;
    QStringList lines;
    QList<QRegularExpression> allowed;
};

State& state()
{
    static State instance;
    return instance;
}

QString channel(QtMsgType type)
{
    switch (type) {
    case QtDebugMsg:
        return QStringLiteral("debug: ");
    case QtInfoMsg:
        return QStringLiteral("info: ");
    case QtWarningMsg:
        return QStringLiteral("warning: ");
    case QtCriticalMsg:
    case QtFatalMsg:
        break;
    }
    return QStringLiteral("critical: ");
}

void record(const QString& line)
{
    const QMutexLocker lock(&state().mutex);
    state().lines.append(line);
}

//! Whether \a message comes of Wine alone: it does not know a call for every window, and keeps the folder
//! that a program ran in for a moment after that program.
bool isOfWine(const QString& message)
{
    static const bool underWine = qEnvironmentVariableIsSet("ZEFUI_TEST_UNDER_WINE");
    return underWine
        && (message.startsWith(QLatin1String("EnableNonClientDpiScaling() failed"))
            || message.startsWith(QLatin1String("QTemporaryDir: Unable to remove")));
}

void recordMessage(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtFatalMsg)
        previousHandler(type, context, message);
    if (!isOfWine(message))
        record(channel(type) + message);
}

} // namespace

QStringList TestLog::takeAll()
{
    return take(QString());
}

QStringList TestLog::take(const QString& prefix)
{
    const QMutexLocker lock(&state().mutex);
    QStringList taken;
    QStringList rest;
    for (const QString& line : std::as_const(state().lines))
        (line.startsWith(prefix) ? taken : rest).append(line);
    state().lines = rest;
    return taken;
}

void TestLog::allow(const QRegularExpression& line)
{
    state().allowed.append(
        QRegularExpression(QRegularExpression::anchoredPattern(line.pattern()),
                           line.patternOptions() | QRegularExpression::DotMatchesEverythingOption));
}

void TestLog::allow(const QString& line)
{
    allow(QRegularExpression(QRegularExpression::escape(line)));
}

void TestLog::start()
{
    state().lines.clear();
    state().allowed.clear();
    // The offscreen plug-in's words about what only a real window system has.
    allow(QRegularExpression(QStringLiteral("warning: This plugin does not support .*")));
    ZEFBase::setLogHandler([](const QString& line) { record(u"log: " + line); });
    previousHandler = qInstallMessageHandler(recordMessage);
}

QStringList TestLog::finish()
{
    qInstallMessageHandler(previousHandler);
    ZEFBase::setLogHandler({});
    QStringList unannounced;
    for (const QString& line : takeAll()) {
        const bool allowed = std::any_of(state().allowed.cbegin(), state().allowed.cend(),
                                         [&](const auto& pattern) { return pattern.match(line).hasMatch(); });
        if (!allowed && !line.startsWith(u"log: "))
            unannounced.append(line);
    }
    return unannounced;
}
