#include "BoundedPattern.h"

#include "MatchingTime.h"

namespace {

// Ordinary patterns need fewer. Ten thousand characters that every step passes over take a few milliseconds.
constexpr int minSteps = 2'000;
// The engine's own limit
constexpr int maxSteps = 10'000'000;
constexpr int stepsFactor = 4;
// Later steps may take longer than earlier ones: each of four times as many four times as long, or twice
// that.
constexpr int timeFactor = 2 * stepsFactor * stepsFactor;

QRegularExpression limited(const QString& pattern, int steps)
{
    return QRegularExpression(QStringLiteral("(*LIMIT_MATCH=%1)").arg(steps) + pattern);
}

} // namespace

BoundedPattern::BoundedPattern(const QString& pattern)
    : m_pattern(pattern)
    , m_expression(limited(pattern, minSteps))
{
}

QRegularExpressionMatch BoundedPattern::match(const QString& text, QRegularExpression::MatchType type) const
{
    if (!isValid())
        return {};
    QElapsedTimer timer;
    timer.start();
    QRegularExpressionMatch found = m_expression.match(text, 0, type);
    if (found.isValid())
        return found;
    const MatchingTime action;
    const MatchingTime::Lap lap;
    for (int steps = minSteps; steps < maxSteps && !found.isValid();) {
        if (timer.nsecsElapsed() * timeFactor > MatchingTime::remaining())
            break;
        steps *= stepsFactor;
        found = limited(m_pattern, steps).match(text, 0, type);
    }
    return found;
}

bool BoundedPattern::mayStart(const QString& start) const
{
    if (!isValid())
        return false;
    // The engine asks for more at the end of the start, or has failed or decided otherwise before it.
    const QRegularExpressionMatch begun =
        m_expression.match(start, 0, QRegularExpression::PartialPreferFirstMatch);
    return !begun.isValid() || (begun.hasPartialMatch() && begun.capturedStart() == 0);
}
