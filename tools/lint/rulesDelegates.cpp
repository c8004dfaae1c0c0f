// Delegate methods, which are called by the names of widgets and read properties by the names of parameters.

#include "ClassCatalog.h"
#include "RuleGroups.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype largestValueCount = 9;
constexpr QLatin1String clickSuffix("_clicked");
constexpr QLatin1String contextType("ZEFPipeFacilityInvocationContext*");

//! "QVariant" for "const QVariant&" and "QVariant const&", as Qt compares it.
QString typeForQt(const DelegateParameter& parameter)
{
    return QString::fromUtf8(QMetaObject::normalizedType(parameter.type.toUtf8().constData()));
}

bool takesContext(const DelegateMethod& method)
{
    return !method.parameters.isEmpty() && typeForQt(method.parameters.constFirst()) == contextType;
}

bool isClickMethod(const DelegateMethod& method)
{
    // Slots of Qt's own naming convention are connected by other means.
    return method.name.endsWith(clickSuffix) && !method.name.startsWith(u"on_");
}

QString senderOf(const DelegateMethod& method)
{
    return method.name.chopped(clickSuffix.size());
}

bool hasWidgetNamed(const Form& form, const QString& name)
{
    return std::any_of(form.widgets.cbegin(), form.widgets.cend(),
                       [&](const FormWidget& widget) { return widget.name == name; });
}

//! Whether a widget of that name can be clicked. Of a class that is not created nothing is known.
bool hasClickableNamed(const Form& form, const QString& name)
{
    return std::any_of(form.widgets.cbegin(), form.widgets.cend(), [&](const FormWidget& widget) {
        if (widget.name != name)
            return false;
        const QMetaObject* meta = widget.created;
        return !meta || meta->indexOfSignal("clicked(bool)") >= 0;
    });
}

bool hasProperty(const Form& form, const QString& name, const QString& property)
{
    return std::any_of(form.widgets.cbegin(), form.widgets.cend(), [&](const FormWidget& widget) {
        if (widget.name != name)
            return false;
        const QMetaObject* meta = widget.created;
        return !meta || meta->indexOfProperty(property.toUtf8().constData()) >= 0;
    });
}

QString problemOfMethod(const Project& project, const DelegateMethod& method)
{
    if (!isClickMethod(method)) {
        // A like-named member of a widget, or nothing of the forms' at all.
        if (!takesContext(method) || !method.name.contains(u'_'))
            return QString();
        return u"is never called: only clicks are dispatched. Call it <objectName>_clicked."_s;
    }
    const QString sender = senderOf(method);
    const auto has = [&](auto predicate) {
        return std::any_of(project.forms.cbegin(), project.forms.cend(),
                           [&](const Form& form) { return predicate(form, sender); });
    };
    if (!has(hasWidgetNamed)) {
        return u"is never called: no widget of the forms is named \"" + sender
            + u"\". Name it after a widget, or remove it.";
    }
    if (!has(hasClickableNamed)) {
        return u"is never called: \"" + sender
            + u"\" has no signal clicked(bool). Use a button, or remove the method.";
    }
    return QString();
}

QString problemOfParameter(const QList<const Form*>& forms, const DelegateParameter& parameter)
{
    if (typeForQt(parameter) != u"QVariant")
        return u"must be a QVariant, or the call finds no method."_s;
    const QStringList pieces = parameter.name.split(u'_');
    if (pieces.size() != 2) {
        return u"is skipped and the call then finds no method. Name it <widget>_<property>, with one "
               "underscore."_s;
    }
    const auto has = [&](auto predicate) { return std::any_of(forms.cbegin(), forms.cend(), predicate); };
    if (!has([&](const Form* form) { return hasWidgetNamed(*form, pieces.at(0)); })) {
        return u"keeps the method from being called: the form has no widget \"" + pieces.at(0)
            + u"\". Correct the name.";
    }
    if (!has([&](const Form* form) { return hasProperty(*form, pieces.at(0), pieces.at(1)); })) {
        return u"keeps the method from being called: \"" + pieces.at(0) + u"\" has no property \""
            + pieces.at(1) + u"\". Correct the name.";
    }
    return QString();
}

} // namespace

void checkDelegateMethods(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Delegate& delegate : project.delegates) {
        for (const DelegateMethod& method : delegate.methods) {
            if (const QString problem = problemOfMethod(project, method); !problem.isEmpty())
                findings->append(
                    {rule, delegate.path, method.line, u"the method " + method.name + u' ' + problem});
        }
    }
}

void checkDelegateParameters(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Delegate& delegate : project.delegates) {
        for (const DelegateMethod& method : delegate.methods) {
            if (!isClickMethod(method))
                continue;
            const auto report = [&](const QString& problem) {
                findings->append({rule, delegate.path, method.line, problem});
            };
            // The values come from the form of the clicked widget.
            QList<const Form*> forms;
            for (const Form& form : project.forms) {
                if (hasWidgetNamed(form, senderOf(method)))
                    forms.append(&form);
            }
            if (forms.isEmpty())
                continue;
            if (!takesContext(method)) {
                report(u"the method " + method.name + u" is never called: its first parameter must be "
                       + contextType + u'.');
                continue;
            }
            if (method.parameters.size() - 1 > largestValueCount) {
                report(u"the method " + method.name + u" is never called: it asks for more than "
                       + QString::number(largestValueCount)
                       + u" values. Let it read some of them by childProperty().");
            }
            for (const DelegateParameter& parameter : method.parameters.sliced(1)) {
                const QString problem = problemOfParameter(forms, parameter);
                if (!problem.isEmpty()) {
                    report(u"the parameter " + (parameter.name.isEmpty() ? parameter.type : parameter.name)
                           + u" of " + method.name + u' ' + problem);
                }
            }
        }
    }
}
