#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <chrono>
#include <functional>

/*!
 * A breadth-first search for a text that passes a test, by substituting characters: pass after pass every
 * text found so far is varied at every position.
 *
 * Positions vary independently of each other. That is why each distinct text is made exactly once, from
 * the first text that leads to it: only at the position that was varied last or at a later one, and only
 * to characters that this position could not reach before. Nothing has to be compared.
 *
 * The first text found is that of the search with all repetitions. There, too, a text is tested first
 * when it is first made, and no text is made first in a later pass than here: its substitutions commute,
 * so the order from the first position to the last one leads to it in as few passes as any other, and
 * through texts that stand before those of the other orders.
 *
 * The search gives up beyond 200,000 distinct texts, 50 million characters in them, or the longest time: a
 * pattern may need very long for a single text.
 */
class CoercionSearch {
public:
    //! The characters that may replace \a character at \a position, in their order.
    using Vary = std::function<QString(int position, QChar character)>;
    using Passes = std::function<bool(const QString& text)>;

    //! \a positions, from the start of \a text, are varied.
    CoercionSearch(const QString& text, int positions,
                   std::chrono::milliseconds longestTime = std::chrono::seconds(2));

    //! Whether a variant passes; it is then stored in \a found. The text itself is not tested.
    bool run(const Vary& vary, const Passes& passes, QString* found);

private:
    struct Position {
        int index;
        QSet<QChar> reached;
        //! The characters that were reached first from this one, in their order.
        QHash<QChar, QString> successors;
    };
    struct Candidate {
        //! The characters at the positions that can change.
        QString characters;
        //! The number among them of the one that was varied last.
        qsizetype lastVaried;
    };

    void findPositions(const Vary& vary);
    QString textOf(const Candidate& candidate) const;
    static const QString& successors(Position& position, QChar from, const Vary& vary);

    const QString m_text;
    const int m_positionCount;
    const std::chrono::milliseconds m_longestTime;
    QDeadlineTimer m_deadline;
    QList<Position> m_positions;
    QList<Candidate> m_candidates;
};
