#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QStringList>

/*!
 * A list of operations, run in a process of its own, which may crash or hang. That process is this very
 * program, called with "--replay <file>"; "-" stands for standard input.
 */
namespace LifetimeRun {

struct Outcome {
    //! How the process ended and what it wrote, when it failed; empty otherwise.
    QString failure;
    //! How many lines it had begun.
    qsizetype begun = 0;
};

//! Runs the lines in a new process. One that does not go on to a next line, or does not end, for \a patience
//! milliseconds has failed.
Outcome inProcess(const QStringList& lines, int patience);

//! Runs the lines in this process; the result is its exit code.
int here(const QStringList& lines);

//! The lines of the file \a path, comments (#) left out.
QStringList linesOf(const QString& path);

/*!
 * Fewer lines that fail as well, found within the time, saved as the file \a path. The result tells the
 * failure, the lines and how to replay them.
 */
QString shrunkReport(const QStringList& lines, const Outcome& outcome, int patience, QDeadlineTimer deadline,
                     const QString& path, QStringList* shrunk = nullptr);

} // namespace LifetimeRun
