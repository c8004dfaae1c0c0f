#pragma once

#include <QtCore/QRegularExpression>
#include <QtCore/QString>

//! The longest text of a whole edit. A single step of a pattern may pass over all of it.
constexpr qsizetype maxWholeLength = 10'000;

/*!
 * A regular expression of a form, which may be invalid or very slow. Matching takes a limited number of
 * steps of the engine and time of the present action; beyond that, the text counts as one that does not
 * match.
 */
class BoundedPattern {
public:
    BoundedPattern() = default;
    explicit BoundedPattern(const QString& pattern);

    QString pattern() const { return m_pattern; }
    bool isValid() const { return m_expression.isValid(); }

    //! No match, and no warning, when the pattern is invalid.
    QRegularExpressionMatch match(const QString& text,
                                  QRegularExpression::MatchType type = QRegularExpression::NormalMatch) const;
    //! Whether the first match is as long as \a text. Without a match its length is 0: an empty text passes.
    bool fills(const QString& text) const { return match(text).capturedLength() == text.size(); }
    //! Whether a text that begins with \a start may pass.
    bool mayStart(const QString& start) const;

private:
    QString m_pattern;
    QRegularExpression m_expression;
};
