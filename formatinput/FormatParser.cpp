#include "FormatParser.h"

#include <algorithm>
#include <limits>

namespace {

// Counts are digits without limit; they stop at the largest length that a line edit can be given.
int saturated(qint64 value)
{
    return static_cast<int>(std::min<qint64>(value, std::numeric_limits<int>::max()));
}

} // namespace

void FormatBuilder::addSeparator(const QString&) { }
void FormatBuilder::addCoercion(const QString&, int, int) { }
void FormatBuilder::addCell(const FormatCell&) { }
void FormatBuilder::setFinalPattern(const QString&) { }
void FormatBuilder::setSuffix(const QString&) { }
void FormatBuilder::reportUnexpected(const QString&) { }
void FormatBuilder::reportUnexpectedAfterMinimum(const QString&) { }
void FormatBuilder::reportDropped(const QString&) { }

FormatParser::FormatParser(QStringView format, FormatBuilder& builder)
    : m_format(format)
    , m_builder(builder)
{
}

QString FormatParser::run()
{
    while (m_position < m_format.size()) {
        const QChar c = m_format.at(m_position);
        bool consumed = false;
        switch (m_state) {
        case State::Between:
            consumed = readBetween(c);
            break;
        case State::Literal:
            consumed = readLiteral(c);
            break;
        case State::Escape:
            consumed = readEscape(c);
            break;
        case State::Group:
            consumed = readGroup(c);
            break;
        case State::Count:
            consumed = readCount(c);
            break;
        }
        if (consumed)
            ++m_position;
    }
    // A literal still pending here is deliberately dropped; "{}" after it makes it the last separator.
    if (m_state != State::Between)
        reportDropped();
    if (!m_prefix.isEmpty())
        m_builder.setSuffix(m_prefix);
    return m_master;
}

bool FormatParser::readBetween(QChar c)
{
    switch (c.unicode()) {
    case u'(':
        m_state = State::Group;
        return true;
    case u'\\':
        m_afterCell = false;
        startEscape(State::Literal);
        return true;
    case u'{':
        m_coercionStart = 0;
        m_coercing = false;
        m_afterCell = false;
        m_number = 0;
        m_maxLength = 0;
        m_hasMinimum = false;
        m_state = State::Count;
        return true;
    default:
        m_afterCell = false;
        m_state = State::Literal;
        return false;
    }
}

bool FormatParser::readLiteral(QChar c)
{
    switch (c.unicode()) {
    case u'\\':
        startEscape(State::Literal);
        return true;
    case u'(':
        flushLiteral();
        m_state = State::Group;
        return true;
    case u'{':
        // Unlike the brace between items, this one deliberately keeps an earlier cell's minimum in force.
        m_coercing = false;
        flushLiteral();
        m_state = State::Count;
        return true;
    default:
        m_text += c;
        m_patternText += c;
        return true;
    }
}

bool FormatParser::readEscape(QChar c)
{
    if (c == u'(' || c == u')' || c == u'{' || c == u'}')
        m_text += c;
    else
        m_text.append(u'\\').append(c);
    m_patternText += c;
    m_state = m_savedState;
    return true;
}

bool FormatParser::readGroup(QChar c)
{
    switch (c.unicode()) {
    case u'(':
        ++m_depth;
        m_text += c;
        m_patternText += c;
        return true;
    case u'\\':
        startEscape(State::Group);
        return true;
    case u')':
        // A bare parenthesis that closes a nested group is deliberately dropped; only "\)" reaches the
        // pattern.
        if (m_depth > 0)
            --m_depth;
        else
            finishGroup();
        return true;
    default:
        m_text += c;
        m_patternText += c;
        return true;
    }
}

bool FormatParser::readCount(QChar c)
{
    switch (c.unicode()) {
    case u',':
        m_explicitMinimum = m_number;
        m_hasMinimum = true;
        m_number = 0;
        return true;
    case u':':
        addNumberToMaxLength();
        m_coercing = true;
        m_coercionText.clear();
        return true;
    case u'|':
        m_coercing = false;
        if (m_hasMinimum) {
            m_builder.reportUnexpectedAfterMinimum(c);
            return true;
        }
        addNumberToMaxLength();
        m_builder.addCoercion(m_coercionText, m_coercionStart, m_maxLength - 1);
        m_coercionStart = m_maxLength;
        return true;
    case u'}':
        // Coercing goes on: the text after the last colon belongs to the next cell.
        addNumberToMaxLength();
        m_state = State::Between;
        return true;
    default:
        if (m_coercing)
            m_coercionText += c;
        else if (c.isDigit())
            m_number = saturated(qint64(m_number) * 10 + c.digitValue());
        else
            reportUnexpected();
        return true;
    }
}

void FormatParser::startEscape(State returnTo)
{
    m_patternText += u'\\';
    m_savedState = returnTo;
    m_state = State::Escape;
}

void FormatParser::flushLiteral()
{
    m_afterCell = false;
    if (m_text.isEmpty())
        return;
    m_builder.addSeparator(m_text);
    m_master.append(u"(?:").append(m_patternText).append(u")?");
    m_prefix = m_text;
    m_text.clear();
    m_patternText.clear();
}

void FormatParser::finishGroup()
{
    m_state = State::Between;
    if (m_afterCell) {
        m_builder.setFinalPattern(m_text);
    } else {
        FormatCell cell;
        cell.pattern = m_text;
        cell.prefix = m_prefix;
        cell.maxLength = m_maxLength;
        if (m_hasMinimum)
            cell.minLength = m_explicitMinimum;
        cell.coercing = m_coercing;
        if (m_coercing) {
            cell.coercionText = m_coercionText;
            cell.coercionStart = m_coercionStart;
            m_coercing = false;
            m_coercionText.clear();
        }
        m_builder.addCell(cell);
        m_master.append(u'(').append(m_text).append(u')');
        m_prefix.clear();
        m_afterCell = true;
        m_number = 0;
        m_maxLength = 0;
    }
    m_text.clear();
    m_patternText.clear();
}

void FormatParser::addNumberToMaxLength()
{
    m_maxLength = saturated(qint64(m_maxLength) + m_number);
    m_number = 0;
}

void FormatParser::reportUnexpected()
{
    qsizetype length = 1;
    if (m_format.at(m_position).isHighSurrogate() && m_position + 1 < m_format.size()
        && m_format.at(m_position + 1).isLowSurrogate())
        length = 2;
    m_builder.reportUnexpected(m_format.sliced(m_position, length).toString());
    m_position += length - 1;
}

void FormatParser::reportDropped()
{
    const State open = m_state == State::Escape ? m_savedState : m_state;
    const QString escape = m_state == State::Escape ? QStringLiteral("\\") : QString();
    if (open == State::Count)
        m_builder.reportDropped(QStringLiteral("{"));
    else if (open == State::Group)
        m_builder.reportDropped(u'(' + m_text + escape);
    else
        m_builder.reportDropped(m_text + escape);
}
