#pragma once

#include "BoundedPattern.h"

#include <QtGui/QRegularExpressionValidator>

#include <optional>

/*!
 * Qt's validator with two differences: an invalid pattern refuses everything in silence, where Qt would print
 * a warning at every keystroke, and a slow pattern refuses what takes it too long. The last verdict is kept,
 * as an edit asks all its cells after every change of one.
 */
class PatternValidator : public QRegularExpressionValidator { // clazy:exclude=missing-qobject-macro
public:
    using QRegularExpressionValidator::QRegularExpressionValidator;

    State validate(QString& input, int& pos) const override;

private:
    State judge(const QString& text) const;

    mutable std::optional<BoundedPattern> m_anchored;
    mutable QString m_judgedText;
    mutable std::optional<State> m_verdict;
};
