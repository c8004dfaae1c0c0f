#include "PatternValidator.h"

QValidator::State PatternValidator::validate(QString& input, int& pos) const
{
    if (!m_verdict || m_judgedText != input) {
        m_judgedText = input;
        m_verdict = judge(input);
    }
    if (*m_verdict == Invalid)
        pos = static_cast<int>(input.size());
    return *m_verdict;
}

QValidator::State PatternValidator::judge(const QString& text) const
{
    const QRegularExpression own = regularExpression();
    if (own.pattern().isEmpty())
        return Acceptable;
    // An unfinished "\Q" or comment is valid alone and swallows the anchors.
    if (!m_anchored)
        m_anchored.emplace(own.isValid() ? QRegularExpression::anchoredPattern(own.pattern())
                                         : own.pattern());
    const QRegularExpressionMatch match =
        m_anchored->match(text, QRegularExpression::PartialPreferCompleteMatch);
    if (match.hasMatch())
        return Acceptable;
    return text.isEmpty() || match.hasPartialMatch() ? Intermediate : Invalid;
}
