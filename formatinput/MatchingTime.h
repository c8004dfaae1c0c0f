#pragma once

#include <QtCore/QElapsedTimer>

/*!
 * The time that patterns may take in one action: a key, a paste, a setText() and all that follows from it.
 * An action lasts as long as the outermost object of this class; an event loop that runs inside it starts
 * actions of its own. Only the time of a Lap counts, so that slow slots leave the patterns theirs.
 */
class MatchingTime {
public:
    MatchingTime();
    ~MatchingTime();

    //! Nanoseconds that the present action has left; without an action, all of them.
    static qint64 remaining();

    //! What the present action spends; a lap inside another one is part of it.
    class Lap {
    public:
        Lap();
        ~Lap();

    private:
        Q_DISABLE_COPY_MOVE(Lap)
        MatchingTime* m_action;
    };

private:
    Q_DISABLE_COPY_MOVE(MatchingTime)

    MatchingTime* m_outer;
    int m_loopLevel;
    qint64 m_spent = 0;
    QElapsedTimer m_lap;
};
