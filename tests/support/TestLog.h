#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

/*!
 * Everything that was logged since the test function began, on both channels, in the order in which it came.
 *
 * A line stands as "log: …" (ZEFBase::logDebug), "debug: …", "info: …", "warning: …" or "critical: …"
 * (Qt's message output). A test takes the lines that it asserts. A Qt line that no test took and
 * none announced fails the test; lines of the library log need not be taken.
 */
class TestLog {
public:
    //! All lines so far, taken out.
    static QStringList takeAll();
    //! The lines so far that start with \a prefix, for instance "log: ", taken out; the others stay.
    static QStringList take(const QString& prefix);
    //! Announces Qt lines, with their channel, that may come any number of times in this test function.
    static void allow(const QRegularExpression& line);
    //! As above, the exact line.
    static void allow(const QString& line);

    //! Called by ZEFTest around each test function.
    static void start();
    //! The Qt lines that were neither taken nor announced.
    static QStringList finish();
};
