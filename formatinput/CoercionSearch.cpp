#include "CoercionSearch.h"

#include <utility>

namespace {

constexpr qint64 maxTexts = 200'000;
constexpr qint64 maxCharacters = 200'000'000;

} // namespace

CoercionSearch::CoercionSearch(const QString& text, int positions)
    : m_text(text)
    , m_tail(text.sliced(positions))
    , m_candidates({{text.first(positions), 0}})
    , m_positions(positions)
{
    for (int j = 0; j < positions; ++j)
        m_positions[j].reached.insert(text.at(j));
}

bool CoercionSearch::run(const Vary& vary, const Passes& passes, QString* found)
{
    qint64 texts = 0;
    for (qsizetype pass = 0; pass < m_text.size() && !m_candidates.isEmpty(); ++pass) {
        const QList<Candidate> candidates = std::exchange(m_candidates, {});
        for (const Candidate& candidate : candidates) {
            for (int j = candidate.lastVaried; j < m_positions.size(); ++j) {
                for (const QChar successor : successors(j, candidate.head, vary)) {
                    ++texts;
                    if (texts > maxTexts || texts * m_text.size() > maxCharacters)
                        return false;
                    QString head = candidate.head;
                    head[j] = successor;
                    const QString variant = head + m_tail;
                    if (passes(variant)) {
                        *found = variant;
                        return true;
                    }
                    m_candidates.append({head, j});
                }
            }
        }
    }
    return false;
}

const QString& CoercionSearch::successors(int position, const QString& head, const Vary& vary)
{
    Position& known = m_positions[position];
    const QChar from = head.at(position);
    auto entry = known.successors.find(from);
    if (entry == known.successors.end()) {
        entry = known.successors.insert(from, {});
        QList<QString> variants;
        vary(position, head, variants);
        for (const QString& variant : std::as_const(variants)) {
            const QChar to = variant.at(position);
            if (known.reached.contains(to))
                continue;
            known.reached.insert(to);
            entry->append(to);
        }
    }
    return *entry;
}
