#include <ZEFCoercionSpec.h>

#include <algorithm>

ZEFCoercionSpec::ZEFCoercionSpec(const QString& spec, int start, int end)
    : m_spec(spec)
    , m_start(start)
    , m_end(end)
{
}

QString ZEFCoercionSpec::spec() const
{
    return m_spec;
}

void ZEFCoercionSpec::setSpec(const QString& spec)
{
    m_spec = spec;
}

int ZEFCoercionSpec::start() const
{
    return m_start;
}

void ZEFCoercionSpec::setStart(int start)
{
    m_start = start;
}

int ZEFCoercionSpec::end() const
{
    return m_end;
}

void ZEFCoercionSpec::setEnd(int end)
{
    m_end = end;
}

bool ZEFCoercionSpec::inRange(int position) const
{
    if (m_end == -1)
        return position >= m_start;
    // The start is deliberately not asked when there is an end.
    return position <= m_end;
}

int ZEFCoercionSpec::coerce(int position, const QString& input, QList<QString>& output) const
{
    if (position < 0 || position >= input.size())
        return 0;
    // The input may be an element of the output.
    const QString source = input;
    const QString found = replacements(position, source.at(position));
    for (const QChar replacement : found) {
        QString variant = source;
        variant[position] = replacement;
        output.append(variant);
    }
    return static_cast<int>(found.size());
}

QString ZEFCoercionSpec::replacements(int position, QChar character) const
{
    QString found;
    if (!inRange(position))
        return found;
    for (qsizetype k = 0; k + 1 < m_spec.size(); k += 2) {
        if (m_spec.at(k) == character && m_spec.at(k + 1) != character)
            found.append(m_spec.at(k + 1));
    }
    return found;
}

int ZEFCoercionSpec::coerce(const QString& input, QList<QString>& output) const
{
    const QString source = input;
    const auto length = static_cast<int>(source.size());
    // Deliberately exclusive, although inRange() counts the end in: a closed range never visits its end.
    const int to = m_end == -1 ? length : std::min(m_end, length);
    int count = 0;
    for (int position = std::max(m_start, 0); position < to; ++position)
        count += coerce(position, source, output);
    return count;
}
