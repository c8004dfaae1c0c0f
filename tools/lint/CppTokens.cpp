#include "CppTokens.h"

namespace {

bool isNameStart(QChar character)
{
    return character.isLetter() || character == u'_';
}

bool isNamePart(QChar character)
{
    return character.isLetterOrNumber() || character == u'_';
}

class Tokenizer {
public:
    Tokenizer(const QString& source, Suppressions* suppressions)
        : m_source(source)
        , m_suppressions(suppressions)
    {
    }

    QList<CppToken> run();

private:
    QChar at(qsizetype position) const
    {
        return position < m_source.size() ? m_source.at(position) : QChar();
    }
    void advanceTo(qsizetype position);
    void skipPreprocessorLine();
    void skipComment(qsizetype textEnd, qsizetype end);
    qsizetype endOfLiteral() const;
    qsizetype endOfRawLiteral(qsizetype quote) const;

    const QString& m_source;
    Suppressions* m_suppressions;
    qsizetype m_position = 0;
    qint64 m_line = 1;
};

QList<CppToken> Tokenizer::run()
{
    QList<CppToken> tokens;
    bool startsLine = true;
    while (m_position < m_source.size()) {
        const QChar character = at(m_position);
        if (character.isSpace()) {
            startsLine = startsLine || character == u'\n';
            advanceTo(m_position + 1);
            continue;
        }
        if (character == u'/' && at(m_position + 1) == u'/') {
            qsizetype end = m_source.indexOf(u'\n', m_position);
            end = end < 0 ? m_source.size() : end;
            skipComment(end, end);
            continue;
        }
        if (character == u'/' && at(m_position + 1) == u'*') {
            const qsizetype close = m_source.indexOf(u"*/", m_position + 2);
            if (close < 0)
                break;
            skipComment(close, close + 2);
            continue;
        }
        if (character == u'#' && startsLine) {
            skipPreprocessorLine();
            continue;
        }
        startsLine = false;
        qsizetype end = m_position + 1;
        if (isNamePart(character)) {
            while (isNamePart(at(end)))
                ++end;
            if (at(end) == u'"' && at(end - 1) == u'R')
                end = endOfRawLiteral(end);
        } else if (character == u'"' || character == u'\'') {
            end = endOfLiteral();
        }
        tokens.append({m_source.sliced(m_position, end - m_position), m_line});
        advanceTo(end);
    }
    return tokens;
}

void Tokenizer::advanceTo(qsizetype position)
{
    m_line += QStringView(m_source).sliced(m_position, position - m_position).count(u'\n');
    m_position = position;
}

void Tokenizer::skipPreprocessorLine()
{
    qsizetype end = m_source.indexOf(u'\n', m_position);
    while (end > 0 && m_source.at(end - 1) == u'\\')
        end = m_source.indexOf(u'\n', end + 1);
    advanceTo(end < 0 ? m_source.size() : end);
}

void Tokenizer::skipComment(qsizetype textEnd, qsizetype end)
{
    const qint64 firstLine = m_line;
    const auto rules =
        suppressedRules(QStringView(m_source).sliced(m_position + 2, textEnd - m_position - 2));
    advanceTo(end);
    if (rules && m_suppressions)
        m_suppressions->append({firstLine, m_line + 1, *rules});
}

qsizetype Tokenizer::endOfLiteral() const
{
    const QChar quote = at(m_position);
    for (qsizetype i = m_position + 1; i < m_source.size(); ++i) {
        if (at(i) == u'\\')
            ++i;
        else if (at(i) == quote)
            return i + 1;
    }
    return m_source.size();
}

//! The end of the literal whose quotation mark stands at \a quote: R"delimiter(text)delimiter".
qsizetype Tokenizer::endOfRawLiteral(qsizetype quote) const
{
    constexpr qsizetype longestDelimiter = 16;
    const qsizetype open = m_source.indexOf(u'(', quote);
    // Such as the name of a macro before an ordinary literal
    if (open < 0 || open - quote - 1 > longestDelimiter)
        return quote;
    const QString close = u')' + m_source.sliced(quote + 1, open - quote - 1) + u'"';
    const qsizetype end = m_source.indexOf(close, open);
    return end < 0 ? m_source.size() : end + close.size();
}

} // namespace

bool CppToken::isName() const
{
    return isNameStart(text.at(0));
}

QList<CppToken> cppTokens(const QString& source, Suppressions* suppressions)
{
    return Tokenizer(source, suppressions).run();
}
