#include <ZEFBase.h>

#include <QtCore/QLoggingCategory>
#include <QtCore/QMutex>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(logChannel, "zef.log", QtInfoMsg)

QMutex handlerMutex; // clazy:exclude=non-pod-global-static

ZEFBase::LogHandler& currentHandler()
{
    static ZEFBase::LogHandler handler;
    return handler;
}

} // namespace

void ZEFBase::logDebug(const QString& line)
{
    LogHandler handler;
    {
        const QMutexLocker lock(&handlerMutex);
        handler = currentHandler();
    }
    if (handler)
        handler(line);
    else
        qCDebug(logChannel).noquote().nospace() << line;
}

ZEFBase::LogHandler ZEFBase::setLogHandler(LogHandler handler)
{
    const QMutexLocker lock(&handlerMutex);
    return std::exchange(currentHandler(), std::move(handler));
}
