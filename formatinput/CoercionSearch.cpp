#include "CoercionSearch.h"

#include "MatchingTime.h"

#include <QtCore/QSet>

#include <algorithm>
#include <utility>

namespace {

struct Form {
    QString text;
    //! The number, among the positions that vary, of the one that was varied last.
    qsizetype lastVaried;
};

} // namespace

CoercionSearch::CoercionSearch(Test passes, Test mayStart)
    : m_passes(std::move(passes))
    , m_mayStart(std::move(mayStart))
{
}

std::optional<QString> CoercionSearch::run(const QString& text,
                                           const QList<const ZEFCoercionSpec*>& coercions) const
{
    const MatchingTime::Lap lap;
    QList<int> positions;
    for (int position = 0; position < std::min(coercions.size(), text.size()); ++position) {
        if (!coercions.at(position)->replacements(position, text.at(position)).isEmpty())
            positions.append(position);
    }
    const qsizetype maxSeen = std::min(maxForms, maxCharacters / std::max<qsizetype>(text.size(), 1));
    QSet<QString> seen = {text};
    QList<Form> forms = {{text, 0}};
    for (qsizetype pass = 0; pass < text.size() && !forms.isEmpty(); ++pass) {
        const QList<Form> bases = std::exchange(forms, {});
        for (const Form& base : bases) {
            // Positions vary independently, so that the order from the first to the last one reaches every
            // form, and in as few passes as any other order.
            for (qsizetype i = base.lastVaried; i < positions.size(); ++i) {
                const int position = positions.at(i);
                // No form that is made of this one from here on changes the characters before.
                if (i > base.lastVaried && !m_mayStart(base.text.left(position)))
                    break;
                const QString found = coercions.at(position)->replacements(position, base.text.at(position));
                for (const QChar character : found) {
                    Form form = {base.text, i};
                    form.text[position] = character;
                    if (seen.contains(form.text))
                        continue;
                    if (seen.size() > maxSeen || MatchingTime::remaining() <= 0)
                        return std::nullopt;
                    seen.insert(form.text);
                    if (m_passes(form.text))
                        return form.text;
                    forms.append(form);
                }
            }
        }
    }
    return std::nullopt;
}
