// Object names, by which everything in a form is reached.

#include "RuleGroups.h"

#include <QtCore/QHash>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QLatin1String closeName("close");

bool isLetterOrDigit(QChar character)
{
    return character.unicode() < 128 && character.isLetterOrNumber();
}

//! "userName" for "user_name", "okButton" for "ok-button".
QString camelCase(const QString& name)
{
    QString result;
    bool raise = false;
    for (const QChar character : name) {
        if (!isLetterOrDigit(character)) {
            raise = !result.isEmpty();
            continue;
        }
        result += raise ? character.toUpper() : character;
        raise = false;
    }
    return result;
}

QString rename(const QString& name)
{
    const bool isPlain = std::all_of(name.cbegin(), name.cend(), [](QChar c) { return c.unicode() < 128; });
    const QString suggestion = isPlain ? camelCase(name) : QString();
    if (suggestion.isEmpty() || suggestion.at(0).isDigit())
        return u"Rename the widget; letters and digits are safe."_s;
    return u"Rename the widget, for instance to " + suggestion + u'.';
}

} // namespace

void checkDuplicateNames(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        QHash<QString, qint64> firstLines;
        for (const FormWidget& widget : form.widgets) {
            if (widget.name.isEmpty() || widget.name == closeName)
                continue;
            const auto first = firstLines.constFind(widget.name);
            if (first == firstLines.cend()) {
                firstLines.insert(widget.name, widget.line);
                continue;
            }
            findings->append({rule, form.path, widget.line,
                              u"\"" + widget.name + u"\" is also the name of the widget in line "
                                  + QString::number(*first)
                                  + u": showing, enabling and focusing by name reach only the first, "
                                    u"property values reach all, "
                                    "and a delegate parameter gets the value of the last. Give each widget "
                                    "its own name."});
        }
    }
}

void checkCloseTwice(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        const FormWidget* first = nullptr;
        for (const FormWidget& widget : form.widgets) {
            if (widget.name != closeName)
                continue;
            if (first) {
                findings->append(
                    {rule, form.path, widget.line,
                     u"the widget in line " + QString::number(first->line)
                         + u" is named \"close\" too: a click on either closes the form, and showing, "
                           "enabling and focusing by name reach only the first. Keep the name for one "
                           "widget."});
            } else {
                first = &widget;
            }
        }
    }
}

void checkAddressableNames(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            const QString& name = widget.name;
            if (name.contains(u'_')) {
                findings->append({rule, form.path, widget.line,
                                  u"no delegate parameter and no property key can name \"" + name
                                      + u"\", since both are split at the underscore. " + rename(name)});
            } else if (!std::all_of(name.cbegin(), name.cend(), isLetterOrDigit)
                       || (!name.isEmpty() && name.at(0).isDigit())) {
                findings->append({rule, form.path, widget.line,
                                  u"no delegate can have a method or a parameter for \"" + name
                                      + u"\", since it is no plain C++ name. " + rename(name)});
            }
        }
    }
}
