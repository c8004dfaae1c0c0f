// Forms of Designer's templates for windows: their top widget, and the buttons that Qt makes in them.

#include "ClassCatalog.h"
#include "RuleGroups.h"

using namespace Qt::StringLiterals;

void checkRoots(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        const FormWidget& root = form.widgets.constFirst();
        const bool isMainWindow = ClassCatalog::inherits(root.created, "QMainWindow");
        if (!isMainWindow && !ClassCatalog::inherits(root.created, "QDialog"))
            continue;
        const QString loss = isMainWindow
            ? u"without its title and icon, and the actions of its menus and tool bars call no delegate"_s
            : u"without its title, icon and modality, and what accepts, rejects or closes it closes the host"_s;
        findings->append({rule, form.path, root.line,
                          u"\"" + root.name + u"\" is a window, a "
                              + QString::fromLatin1(root.created->className())
                              + u": the host shows it as a plain widget, " + loss
                              + u". Choose Designer's template Widget for forms."});
    }
}

void checkButtonBoxes(const Project& project, QLatin1String rule, Findings* findings)
{
    for (const Form& form : project.forms) {
        for (const FormWidget& widget : form.widgets) {
            const FormProperty* buttons = widget.property("standardButtons"_L1);
            if (!ClassCatalog::inherits(widget.created, "QDialogButtonBox") || !buttons
                || buttons->value.text.isEmpty() || buttons->value.text.endsWith(u"NoButton"))
                continue;
            findings->append(
                {rule, form.path, widget.line,
                 u"the buttons of \"" + widget.name
                     + u"\" have no object names: a click on any of them calls the delegate's method "
                       "_clicked. Draw push buttons and name them, or connect accepted() and "
                       "rejected() of the box to slots of the form, which only close the host."});
        }
    }
}
