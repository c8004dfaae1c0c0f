#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

/*!
 * One step of a lifetime run, and one line of its text:
 *
 *     [when <signal>] <verb> <place> [<argument>...]
 *
 * "press 2.5 left" presses a button on the sixth widget of the third host; numbers wrap round, so that
 * a line means something whatever lines came before it. A line with "when" waits for the next signal of that
 * name, of whatever object ("any" for the next signal of all), and happens inside it; its place may also
 * be "emitter", "parent" or "host", as seen from what emitted the signal.
 */
struct Operation {
    struct Place {
        enum Kind { Numbered, Emitter, Parent, Host };
        Kind kind = Numbered;
        int host = 0;
        int widget = 0;
    };

    QString signal;
    QString verb;
    Place place;
    QStringList arguments;

    //! The operation that \a line tells; nothing when it tells none.
    static std::optional<Operation> fromLine(const QString& line);
    QString toLine() const;

    QString argument(qsizetype index) const { return arguments.value(index); }
    int number(qsizetype index) const { return arguments.value(index).toInt(); }
};

//! \a count lines drawn by lot; the same \a seed draws the same lines.
QStringList drawnOperations(quint32 seed, int count);
