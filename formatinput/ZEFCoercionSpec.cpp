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
    if (!inRange(position) || position < 0 || position >= input.size())
        return 0;
    // The input may be an element of the output.
    const QString source = input;
    const QChar found = source.at(position);
    int count = 0;
    for (qsizetype k = 0; k + 1 < m_spec.size(); k += 2) {
        const QChar from = m_spec.at(k);
        const QChar to = m_spec.at(k + 1);
        if (found != from || from == to)
            continue;
        QString variant = source;
        variant[position] = to;
        output.append(variant);
        ++count;
    }
    return count;
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
