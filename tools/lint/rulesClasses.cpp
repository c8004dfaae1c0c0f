// Classes that the form loader cannot create, and forms that it cannot build.

#include "ClassCatalog.h"
#include "RuleGroups.h"

namespace {

QString advice(const QString& nearest)
{
    if (nearest.isEmpty())
        return QStringLiteral("Use a class that the library's loader knows.");
    return u"Use a class that the library's loader knows; the nearest is " + nearest + u'.';
}

} // namespace

void checkClasses(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            if (ClassCatalog::find(widget.className) || ClassCatalog::isPromotedForever(form, widget))
                continue;
            QString consequence;
            if (const QMetaObject* base = widget.created) {
                consequence =
                    u"the service shows a plain " + QString::fromLatin1(base->className()) + u" instead";
            } else if (widget.parent < 0) {
                consequence = QStringLiteral("the form does not load");
            } else {
                consequence = QStringLiteral("the widget is left out with everything inside it");
            }
            findings->append({rule, form.path, widget.line,
                              u"the loader cannot create the class " + widget.className + u" of \""
                                  + widget.name + u"\": " + consequence + u". "
                                  + advice(ClassCatalog::nearest(widget.className))});
        }
    }
}

void checkLoading(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        for (const FormFault& fault : form.faults) {
            QString message = fault.reason + u": the form does not load.";
            if (!fault.layoutClass.isEmpty())
                message += u' ' + advice(ClassCatalog::nearestLayout(fault.layoutClass));
            findings->append({rule, form.path, fault.line, message});
        }
    }
}
