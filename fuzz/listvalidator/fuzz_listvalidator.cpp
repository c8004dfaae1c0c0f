// The validator over a list, against a second account of its rules.
//
// Lines: "e<text>" adds an entry, "m<number>" sets the minimum length, "v<text>" validates.

#include <support/FuzzApplication.h>
#include <support/FuzzTarget.h>
#include <support/FuzzText.h>

#include <ZEFListValidator.h>

namespace {

struct Outcome {
    QValidator::State state = QValidator::Invalid;
    QString message;

    bool operator==(const Outcome& other) const = default;
};

Outcome expected(const QStringList& list, long minimum, const QString& text)
{
    if (text.isEmpty())
        return {QValidator::Intermediate, QStringLiteral("%{list_empty_message}")};
    if (text.size() < minimum)
        return {QValidator::Intermediate, QStringLiteral("%{list_incomplete_message}")};
    if (list.contains(text))
        return {QValidator::Acceptable, QStringLiteral("%{list_valid_message}")};
    return {QValidator::Invalid, QStringLiteral("%{list_invalid_message}")};
}

void check(ZEFListValidator* validator, const QStringList& list, Outcome* last, const QString& text)
{
    QStringList announced;
    QObject context;
    QObject::connect(validator, &ZEFListValidator::validityChanged, &context,
                     [&](QValidator::State state) { announced.append(QString::number(state)); });
    QObject::connect(validator, &ZEFListValidator::validityMessageChanged, &context,
                     [&](const QString& message) { announced.append(message); });

    QString rest = text;
    rest.remove(u'-');
    const Outcome outcome = expected(list, validator->minimumLength(), rest);
    QStringList expectedSignals;
    if (outcome.state != last->state)
        expectedSignals.append(QString::number(outcome.state));
    if (outcome.message != last->message)
        expectedSignals.append(outcome.message);

    QString input = text;
    const auto caret = static_cast<int>(text.size());
    int position = caret;
    FUZZ_REQUIRE(validator->validate(input, position) == outcome.state);
    FUZZ_REQUIRE(input == rest);
    FUZZ_REQUIRE(position == caret);
    FUZZ_REQUIRE(validator->lastMessage() == outcome.message);
    FUZZ_REQUIRE(announced == expectedSignals);
    *last = outcome;

    // The same text once more announces nothing.
    announced.clear();
    FUZZ_REQUIRE(validator->validate(input, position) == outcome.state);
    FUZZ_REQUIRE(announced.isEmpty());
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QList<FuzzStep> steps = stepsOf(QByteArrayView(data, static_cast<qsizetype>(size)));
    QStringList list;
    for (const FuzzStep& step : steps) {
        if (step.what == 'e')
            list.append(step.text());
    }
    ZEFListValidator validator(nullptr, list);
    Outcome last;
    for (const FuzzStep& step : steps) {
        if (step.what == 'm')
            validator.setMinimumLength(step.number(-10, 100));
        else if (step.what == 'v')
            check(&validator, list, &last, step.text());
    }
    FuzzApplication::requireSilence();
    return 0;
}
