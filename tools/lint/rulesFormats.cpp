// The formats of format edits, read by the machine that builds the edits.

#include "ClassCatalog.h"
#include "RuleGroups.h"
#include "formatinput/FormatParser.h"

#include <QtCore/QHash>
#include <QtCore/QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

//! Writes down what becomes of a format.
class FormatNotes : public FormatBuilder {
public:
    void addCell(const FormatCell& cell) override
    {
        cells.append(cell);
        patterns.append(cell.pattern);
    }
    void setFinalPattern(const QString& pattern) override { patterns.append(pattern); }
    void reportUnexpected(const QString& character) override { unexpected.append(character); }
    void reportUnexpectedAfterMinimum(const QString& character) override
    {
        unexpectedAfterMinimum.append(character);
    }
    void reportDropped(const QString& text) override { dropped.append(text); }

    QList<FormatCell> cells;
    QStringList patterns;
    QStringList unexpected;
    QStringList unexpectedAfterMinimum;
    QStringList dropped;
    QString master;
};

/*!
 * Calls \a check with what becomes of each format of the project and a function that reports a problem
 * of it.
 */
template <typename Check>
void forEachFormat(const Project& project, QLatin1String rule, Findings* findings, Check check)
{
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            const FormProperty* format = widget.property("format"_L1);
            // What a placeholder makes of a format is known only when it is filled.
            if (!format || format->value.text.contains(u"%{")
                || !ClassCatalog::inherits(widget.created, "ZEFFormatEdit"))
                continue;
            FormatNotes notes;
            notes.master = FormatParser(format->value.text, notes).run();
            check(notes, [&](const QString& problem) {
                findings->append({rule, form.path, format->value.line,
                                  u"in the format of \"" + widget.name + u"\" " + problem});
            });
        }
    }
}

//! What is wrong with a regular expression; empty for a valid one.
QString errorOf(const QString& pattern)
{
    // Compiling takes long, and the edits of a program share a few patterns.
    static QHash<QString, QString> known;
    const auto found = known.constFind(pattern);
    if (found != known.cend())
        return *found;
    const QRegularExpression expression(pattern);
    return *known.insert(pattern, expression.isValid() ? QString() : expression.errorString());
}

//! How to keep the dropped end of a format.
QString adviceFor(const QString& dropped)
{
    if (dropped.startsWith(u'{'))
        return u"Close the count block."_s;
    if (dropped.startsWith(u'('))
        return u"Close the group; a nested one is written \\( and \\)."_s;
    return u"Write {} after it to show it."_s;
}

} // namespace

void checkFormatSyntax(const Project& project, QLatin1String rule, Findings* findings)
{
    forEachFormat(project, rule, findings, [](const FormatNotes& notes, auto report) {
        for (const QString& character : notes.unexpected) {
            report(u"the character " + character
                   + u" of a count block is ignored. Between { and } write digits, a comma, bars and colons "
                     u"only.");
        }
        for (const QString& character : notes.unexpectedAfterMinimum) {
            report(
                u"the " + character
                + u" after a minimum is ignored, and the digits on both sides become one number. A minimum "
                  "stays in force behind a separator; leave out either it or the coercion ranges.");
        }
    });
}

void checkFormatCells(const Project& project, QLatin1String rule, Findings* findings)
{
    forEachFormat(project, rule, findings, [](const FormatNotes& notes, auto report) {
        for (qsizetype i = 0; i < notes.cells.size(); ++i) {
            if (notes.cells.at(i).maxLength > 0)
                continue;
            report(u"the cell (" + notes.cells.at(i).pattern + u"), number " + QString::number(i + 1)
                   + u", accepts no characters. Write its length in a count block before it, such as {3}.");
        }
    });
}

void checkFormatLiterals(const Project& project, QLatin1String rule, Findings* findings)
{
    forEachFormat(project, rule, findings, [](const FormatNotes& notes, auto report) {
        for (const QString& text : notes.dropped)
            report(u"the end \"" + text + u"\" is dropped. " + adviceFor(text));
    });
}

void checkFormatPatterns(const Project& project, QLatin1String rule, Findings* findings)
{
    forEachFormat(project, rule, findings, [](const FormatNotes& notes, auto report) {
        bool allValid = true;
        for (const QString& pattern : notes.patterns) {
            const QString error = errorOf(pattern);
            if (error.isEmpty())
                continue;
            allValid = false;
            report(u"(" + pattern + u") is no valid regular expression: " + error
                   + u". Correct it; a nested group is written \\( and \\).");
        }
        if (allValid && !errorOf(notes.master).isEmpty())
            report(
                u"the cells and separators together are no valid regular expression, so that no text is ever "
                "complete. Escape the signs of the separators."_s);
    });
}
