#pragma once

#include <ZEFBASEExport.h>

#include <QtCore/QString>

#include <functional>

//! The family's debug log, a channel apart from Qt's own debug output.
class ZEFBASE_EXPORT ZEFBase {
public:
    using LogHandler = std::function<void(const QString& line)>;

    //! Hands \a line, as it stands, to the log handler. The handler may log in turn and may throw nothing.
    static void logDebug(const QString& line);

    /*!
     * Replaces the handler and returns the previous one, empty for the default. An empty handler
     * restores the default, which writes to the logging category "zef.log" at debug level; that
     * category is off unless logging rules turn it on.
     */
    static LogHandler setLogHandler(LogHandler handler);
};
