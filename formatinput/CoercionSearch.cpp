#include "CoercionSearch.h"

#include <utility>

namespace {

constexpr qint64 maxTexts = 200'000;
constexpr qint64 maxCharacters = 50'000'000;

} // namespace

CoercionSearch::CoercionSearch(const QString& text, int positions, std::chrono::milliseconds longestTime)
    : m_text(text)
    , m_positionCount(positions)
    , m_longestTime(longestTime)
{
}

bool CoercionSearch::run(const Vary& vary, const Passes& passes, QString* found)
{
    m_deadline.setRemainingTime(m_longestTime);
    findPositions(vary);
    qint64 texts = 0;
    for (qsizetype pass = 0; pass < m_text.size() && !m_candidates.isEmpty(); ++pass) {
        const QList<Candidate> candidates = std::exchange(m_candidates, {});
        for (const Candidate& candidate : candidates) {
            for (qsizetype j = candidate.lastVaried; j < m_positions.size(); ++j) {
                if (m_deadline.hasExpired())
                    return false;
                for (const QChar successor : successors(m_positions[j], candidate.characters.at(j), vary)) {
                    ++texts;
                    if (texts > maxTexts || texts * m_text.size() > maxCharacters || m_deadline.hasExpired())
                        return false;
                    Candidate variant = {candidate.characters, j};
                    variant.characters[j] = successor;
                    const QString text = textOf(variant);
                    if (passes(text)) {
                        *found = text;
                        return true;
                    }
                    m_candidates.append(variant);
                }
            }
        }
    }
    return false;
}

void CoercionSearch::findPositions(const Vary& vary)
{
    Candidate start = {{}, 0};
    for (int index = 0; index < m_positionCount && !m_deadline.hasExpired(); ++index) {
        const QChar character = m_text.at(index);
        Position position = {index, {character}, {}};
        if (successors(position, character, vary).isEmpty())
            continue;
        m_positions.append(position);
        start.characters.append(character);
    }
    m_candidates = {start};
}

QString CoercionSearch::textOf(const Candidate& candidate) const
{
    QString text = m_text;
    for (qsizetype i = 0; i < m_positions.size(); ++i)
        text[m_positions.at(i).index] = candidate.characters.at(i);
    return text;
}

const QString& CoercionSearch::successors(Position& position, QChar from, const Vary& vary)
{
    auto entry = position.successors.find(from);
    if (entry == position.successors.end()) {
        entry = position.successors.insert(from, {});
        const QString replacements = vary(position.index, from);
        for (const QChar to : replacements) {
            if (position.reached.contains(to))
                continue;
            position.reached.insert(to);
            entry->append(to);
        }
    }
    return *entry;
}
