#pragma once

#include <ZEFCoercionSpec.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <functional>
#include <optional>

/*!
 * Looks for a form of a text that passes a test, putting one character for another as coercions allow.
 * Coercion j is asked about position j only. Forms with fewer substitutions come first, and there are as
 * many passes as characters.
 *
 * Gives up after maxForms forms, fewer of a long text, or when the time of the action is over.
 */
class CoercionSearch {
public:
    static constexpr qsizetype maxForms = 2'000;
    static constexpr qsizetype maxCharacters = 10'000'000;

    using Test = std::function<bool(const QString& text)>;

    //! \a mayStart says whether a text that passes may start so; what it refuses is not continued.
    CoercionSearch(Test passes, Test mayStart);

    //! The text itself is not tested.
    std::optional<QString> run(const QString& text, const QList<const ZEFCoercionSpec*>& coercions) const;

private:
    Test m_passes;
    Test m_mayStart;
};
