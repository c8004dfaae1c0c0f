// Looks that change with the font, the language and the layout.

#include "ClassCatalog.h"
#include "RuleGroups.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

//! The pixels of a line at 20 points and 96 dots per inch, in fonts that need little.
constexpr int lineOfLargeText = 32;

//! The last name of an enumerator, however much of its scope is written before it.
QString enumerator(const QString& value)
{
    return value.sliced(value.lastIndexOf(u':') + 1);
}

bool showsText(const FormWidget& widget, const QSet<QString>& filled)
{
    static const ClassCatalog::Families inputs{"QLineEdit", "QComboBox", "QAbstractSpinBox",
                                               "QKeySequenceEdit", "ZEFFormatEdit"};
    if (inputs.contain(widget.created))
        return true;
    for (const QLatin1String name : {"text"_L1, "title"_L1, "description"_L1, "offText"_L1, "onText"_L1}) {
        const FormProperty* text = widget.property(name);
        if ((text && !text->value.text.trimmed().isEmpty()) || filled.contains(widget.name + u'_' + name))
            return true;
    }
    return false;
}

} // namespace

void checkCommandLinkHeights(const Project& project, QLatin1String rule, Findings* findings)
{
    static const ClassCatalog::Families links{"ZEFCommandLinkButton"};
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            if (!links.contain(widget.created))
                continue;
            const FormProperty* policy = widget.property("sizePolicy"_L1);
            // A command link starts with the policy of a push button.
            if (policy && enumerator(policy->parts.value(u"vsizetype"_s)) != u"Fixed")
                continue;
            findings->append({rule, form.path, policy ? policy->value.line : widget.line,
                              u"a layout makes the command link \"" + widget.name
                                  + u"\" as low as an empty button, without room for its texts. Set the "
                                    u"vertical policy of its sizePolicy to Preferred."});
        }
    }
}

void checkFormatDirections(const Project& project, QLatin1String rule, Findings* findings)
{
    static const ClassCatalog::Families edits{"ZEFFormatEdit"};
    for (const Form& form : project.forms) {
        // A direction counts for everything inside a widget; parents stand before their children.
        QList<bool> isFixed;
        isFixed.reserve(form.widgets.size());
        for (const FormWidget& widget : form.widgets) {
            isFixed.append(widget.property("layoutDirection"_L1)
                           || (widget.parent >= 0 && isFixed.at(widget.parent)));
            if (isFixed.constLast() || !edits.contain(widget.created))
                continue;
            findings->append({rule, form.path, widget.line,
                              u"in Hebrew and Arabic the cells of \"" + widget.name
                                  + u"\" stand in reverse order, and its text is typed and read so. Set its "
                                    u"layoutDirection, to Qt::LeftToRight for product keys and numbers."});
        }
    }
}

void checkTextHeights(const Project& project, QLatin1String rule, Findings* findings)
{
    const QSet<QString> filled = filledProperties(project);
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            const FormProperty* maximum = widget.property("maximumSize"_L1);
            if (!maximum || !showsText(widget, filled))
                continue;
            bool isNumber = false;
            const int height = maximum->parts.value(u"height"_s).toInt(&isNumber);
            if (!isNumber || height >= lineOfLargeText)
                continue;
            findings->append({rule, form.path, maximum->value.line,
                              u"\"" + widget.name + u"\" is at most " + QString::number(height)
                                  + u" pixels high, which cuts text of 20 points. Leave its height to the "
                                    u"font, or allow "
                                  + QString::number(lineOfLargeText) + u" pixels."});
        }
    }
}
