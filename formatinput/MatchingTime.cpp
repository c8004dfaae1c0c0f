#include "MatchingTime.h"

#include <QtCore/QThread>

namespace {

// A single pattern may overrun it, but the whole action stays below 200 ms.
constexpr qint64 maxNanoseconds = 150'000'000;

MatchingTime* current = nullptr;

} // namespace

MatchingTime::MatchingTime()
    : m_outer(current)
    , m_loopLevel(QThread::currentThread()->loopLevel())
{
    if (!m_outer || m_outer->m_loopLevel < m_loopLevel)
        current = this;
}

MatchingTime::~MatchingTime()
{
    if (current == this)
        current = m_outer;
}

qint64 MatchingTime::remaining()
{
    if (!current)
        return maxNanoseconds;
    const qint64 running = current->m_lap.isValid() ? current->m_lap.nsecsElapsed() : 0;
    return maxNanoseconds - current->m_spent - running;
}

MatchingTime::Lap::Lap()
    : m_action(current && !current->m_lap.isValid() ? current : nullptr)
{
    if (m_action)
        m_action->m_lap.start();
}

MatchingTime::Lap::~Lap()
{
    if (!m_action)
        return;
    m_action->m_spent += m_action->m_lap.nsecsElapsed();
    m_action->m_lap.invalidate();
}
