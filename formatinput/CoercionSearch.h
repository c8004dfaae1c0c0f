#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <functional>

/*!
 * A breadth-first search for a text that passes a test, by substituting characters: pass after pass every
 * text found so far is varied at every position.
 *
 * Positions vary independently of each other. That is why each distinct text is made exactly once, from
 * the first text that leads to it: only at the position that was varied last or at a later one, and only
 * to characters that this position could not reach before. Nothing has to be compared.
 *
 * The search gives up beyond 200,000 distinct texts or 200 million characters in them.
 */
class CoercionSearch {
public:
    //! Appends the variants of a text at one position.
    using Vary = std::function<void(int position, const QString& text, QList<QString>& variants)>;
    using Passes = std::function<bool(const QString& text)>;

    //! \a positions, from the start of \a text, are varied.
    CoercionSearch(const QString& text, int positions);

    //! Whether a variant passes; it is then stored in \a found. The text itself is not tested.
    bool run(const Vary& vary, const Passes& passes, QString* found);

private:
    struct Candidate {
        //! The text up to the last position that varies.
        QString head;
        int lastVaried;
    };
    struct Position {
        QSet<QChar> reached;
        //! The characters that were reached first from this one, in their order.
        QHash<QChar, QString> successors;
    };

    const QString& successors(int position, const QString& head, const Vary& vary);

    const QString m_text;
    const QString m_tail;
    QList<Candidate> m_candidates;
    QList<Position> m_positions;
};
