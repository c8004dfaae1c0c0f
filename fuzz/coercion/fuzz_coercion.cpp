// Coercion: each spec against the words of its rules, and the search against the plain one that repeats
// itself.
//
// Lines: "c<start> <end> <pairs>" adds a spec, "t<text>" is the text, "a<text>" is a text that passes,
// "f<pattern>" a final pattern.

#include <support/FuzzApplication.h>
#include <support/FuzzTarget.h>
#include <support/FuzzText.h>

#include <ZEFCoercionSpec.h>
#include <ZEFFormatCell.h>

#include <formatinput/CoercionSearch.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>

#include <algorithm>
#include <optional>

namespace {

constexpr qsizetype maxSpecs = 8;
constexpr qsizetype maxTextLength = 12;
constexpr qsizetype maxPairsLength = 12;
constexpr int maxPlainSteps = 1'500;

struct Input {
    QList<ZEFCoercionSpec> specs;
    QString text;
    QSet<QString> accepted;
    QString finalPattern;
};

ZEFCoercionSpec specOf(const FuzzStep& step)
{
    const QString argument = step.text();
    const QStringList pieces = argument.split(u' ');
    const QString pairs = argument.section(u' ', 2).left(maxPairsLength);
    return ZEFCoercionSpec(pairs, pieces.value(0).toInt(), pieces.value(1).toInt());
}

Input inputOf(QByteArrayView bytes)
{
    Input input;
    for (const FuzzStep& step : stepsOf(bytes)) {
        if (step.what == 'c' && input.specs.size() < maxSpecs)
            input.specs.append(specOf(step));
        else if (step.what == 't')
            input.text = step.text().left(maxTextLength);
        else if (step.what == 'a')
            input.accepted.insert(step.text());
        else if (step.what == 'f')
            input.finalPattern = step.text();
    }
    // A text that passes as it stands is never searched for.
    input.accepted.remove(input.text);
    return input;
}

bool inRange(const ZEFCoercionSpec& spec, int position)
{
    // Also before the start, when there is an end.
    return spec.end() == -1 ? position >= spec.start() : position <= spec.end();
}

QStringList variantsAt(const ZEFCoercionSpec& spec, int position, const QString& text)
{
    QStringList variants;
    if (position < 0 || position >= text.size() || !inRange(spec, position))
        return variants;
    const QString pairs = spec.spec();
    for (qsizetype k = 1; k < pairs.size(); k += 2) {
        if (text.at(position) == pairs.at(k - 1) && pairs.at(k - 1) != pairs.at(k))
            variants.append(text.left(position) + pairs.at(k) + text.mid(position + 1));
    }
    return variants;
}

void checkSpec(const ZEFCoercionSpec& spec, const QString& text)
{
    const auto length = static_cast<int>(text.size());
    for (int position = -2; position <= length + 1; ++position) {
        FUZZ_REQUIRE(spec.inRange(position) == inRange(spec, position));
        QStringList output = {QStringLiteral("kept")};
        const QStringList variants = variantsAt(spec, position, text);
        FUZZ_REQUIRE(spec.coerce(position, text, output) == variants.size());
        FUZZ_REQUIRE(output == QStringList(QStringLiteral("kept")) + variants);
    }

    QStringList all;
    const int to = spec.end() == -1 ? length : spec.end();
    for (int position = std::max(spec.start(), 0); position < std::min(to, length); ++position)
        all += variantsAt(spec, position, text);
    QStringList output;
    FUZZ_REQUIRE(spec.coerce(text, output) == all.size());
    FUZZ_REQUIRE(output == all);
    for (const QString& variant : std::as_const(output))
        FUZZ_REQUIRE(variant.size() == text.size() && variant != text);
}

/*!
 * The search in passes, as it is stated: spec j varies character j. Of equal candidates only the first is
 * kept, as the later ones would only repeat it. Nothing when it takes too long.
 */
std::optional<QString> plainSearch(const Input& input, bool* tooLong)
{
    int steps = 0;
    QSet<QString> seen;
    QStringList candidates = {input.text};
    for (qsizetype pass = 0; pass < input.text.size(); ++pass) {
        QStringList next;
        for (const QString& candidate : std::as_const(candidates)) {
            for (int j = 0; j < input.specs.size(); ++j) {
                const QStringList variants = variantsAt(input.specs.at(j), j, candidate);
                for (const QString& variant : variants) {
                    *tooLong = ++steps > maxPlainSteps;
                    if (*tooLong)
                        return std::nullopt;
                    if (input.accepted.contains(variant))
                        return variant;
                    if (!seen.contains(variant))
                        next.append(variant);
                    seen.insert(variant);
                }
            }
        }
        candidates = next;
    }
    return std::nullopt;
}

void checkSearch(const Input& input)
{
    bool tooLong = false;
    const std::optional<QString> expected = plainSearch(input, &tooLong);
    if (tooLong)
        return;
    QList<const ZEFCoercionSpec*> coercions;
    for (const ZEFCoercionSpec& spec : input.specs)
        coercions.append(&spec);
    const auto passes = [&](const QString& variant) { return input.accepted.contains(variant); };
    const auto mayStart = [&](const QString& start) {
        return std::any_of(input.accepted.cbegin(), input.accepted.cend(),
                           [&](const QString& text) { return text.startsWith(start); });
    };
    const std::optional<QString> found = CoercionSearch(passes, mayStart).run(input.text, coercions);
    FUZZ_REQUIRE(found == expected);
}

bool fills(const QRegularExpression& pattern, const QString& text)
{
    if (!pattern.isValid())
        return text.isEmpty();
    return pattern.match(text).capturedLength() == text.size();
}

//! A cell that accepts has made its text one that fills the final pattern, and only by its coercions or its
//! case.
void checkCell(Input* input)
{
    ZEFFormatCell cell(nullptr);
    cell.setFinalRegExp(input->finalPattern);
    for (ZEFCoercionSpec& spec : input->specs)
        cell.addCoercionSpec(&spec);
    cell.setText(input->text);
    const QString before = cell.text();
    const bool accepted = cell.validate();
    const QRegularExpression pattern(input->finalPattern);
    if (!accepted) {
        FUZZ_REQUIRE(cell.text() == before);
        FUZZ_REQUIRE(!input->finalPattern.isEmpty() && !fills(pattern, before));
        return;
    }
    if (input->finalPattern.isEmpty() || fills(pattern, before)) {
        FUZZ_REQUIRE(cell.text() == before);
        return;
    }
    FUZZ_REQUIRE(fills(pattern, cell.text()));
    FUZZ_REQUIRE(cell.text() != before);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Input input = inputOf(QByteArrayView(data, static_cast<qsizetype>(size)));
    for (const ZEFCoercionSpec& spec : std::as_const(input.specs))
        checkSpec(spec, input.text);
    checkSearch(input);
    checkCell(&input);
    FuzzApplication::requireSilence();
    return 0;
}
