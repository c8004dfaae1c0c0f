#pragma once

#include <QtCore/QDeadlineTimer>
#include <QtCore/QStringList>

#include <functional>

/*!
 * The shortest part of a list that still fails, found by leaving out ever smaller pieces. The lines that
 * remain keep their order, and none of them can be left out alone, unless the time was up before.
 */
class ListShrinker {
public:
    using Fails = std::function<bool(const QStringList& lines)>;

    //! \a fails is asked many times; it must hold for the list that is given to shrink().
    explicit ListShrinker(Fails fails);

    QStringList shrink(QStringList lines, QDeadlineTimer deadline) const;

private:
    Fails m_fails;
};
