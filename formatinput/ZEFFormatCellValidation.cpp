// The pattern and the final pattern of a cell, and coercion to it.

#include "CoercionSearch.h"
#include "PatternValidator.h"
#include "ZEFFormatCellPrivate.h"

#include <algorithm>

QString ZEFFormatCell::regexp() const
{
    const auto* installed = qobject_cast<const QRegularExpressionValidator*>(validator());
    return installed ? installed->regularExpression().pattern() : QString();
}

void ZEFFormatCell::setRegexp(const QString& pattern)
{
    const QPointer<const QValidator> installed = validator();
    setValidator(new PatternValidator(QRegularExpression(pattern), this));
    delete installed;
}

QString ZEFFormatCell::finalRegExp() const
{
    return d->finalPattern.pattern();
}

void ZEFFormatCell::setFinalRegExp(const QString& pattern)
{
    d->finalPattern = BoundedPattern(pattern);
    d->verdict.reset();
}

void ZEFFormatCell::addCoercionSpec(ZEFCoercionSpec* spec)
{
    if (spec)
        d->coercions.append(spec);
}

void ZEFFormatCell::setEquivs(const QString& pairs)
{
    d->addOwnCoercion(pairs, 0);
    if (pairs.size() % 2 == 0)
        d->equivs = pairs;
}

void ZEFFormatCellPrivate::addOwnCoercion(const QString& pairs, int start)
{
    coercions.append(&ownCoercions.emplace_back(pairs, start, -1));
}

bool ZEFFormatCell::validate()
{
    const ZEFFormatCellPrivate::Use use(this);
    const QString shown = text();
    const std::optional<QString> accepted = d->acceptedForm(shown);
    if (!accepted)
        return false;
    // A receiver may ask again, and may find yet another form: one rewriting suffices.
    if (*accepted != shown && !d->rewriting) {
        const QPointer<ZEFFormatCell> self(this);
        d->rewriting = true;
        setText(*accepted);
        if (self)
            d->rewriting = false;
    }
    return true;
}

std::optional<QString> ZEFFormatCellPrivate::acceptedForm(const QString& text)
{
    QList<ZEFCoercionSpec> present;
    for (const ZEFCoercionSpec* coercion : std::as_const(coercions))
        present.append(*coercion);
    if (verdict && verdict->text == text && (verdict->passes || verdict->coercions == present))
        return verdict->passes ? std::optional(text) : std::nullopt;
    const bool inTime = MatchingTime::remaining() > 0;
    std::optional<QString> form;
    if (finalPattern.pattern().isEmpty() || finalPattern.fills(text))
        form = text;
    else if (const std::optional<QString> coerced = coercedForm(text))
        form = coerced;
    else if (finalPattern.fills(text.toUpper()))
        form = text.toUpper();
    else if (finalPattern.fills(text.toLower()))
        form = text.toLower();
    // A text that had no time of its own is judged again with the next action.
    if (form ? *form == text : inTime)
        verdict = {text, form.has_value(), present};
    return form;
}

std::optional<QString> ZEFFormatCellPrivate::coercedForm(const QString& text) const
{
    // Spec j is deliberately asked about position j only, so positions without a spec never change.
    QList<const ZEFCoercionSpec*> all;
    if (formatCoercions) {
        auto coercion = formatCoercions->cbegin();
        while (all.size() < std::min(formatCoercionCount, text.size()))
            all.append(&*coercion++);
    }
    all.append(coercions);
    const CoercionSearch search([this](const QString& form) { return finalPattern.fills(form); },
                                [this](const QString& start) { return finalPattern.mayStart(start); });
    return search.run(text, all);
}
