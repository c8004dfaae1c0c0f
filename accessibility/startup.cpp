// Tells Qt of the interfaces in this room, in every program that has the library.

#include "AccessibleCommandLinkButton.h"
#include "AccessibleEllipsisLabel.h"
#include "AccessibleFlatButton.h"
#include "AccessibleFormatCell.h"
#include "AccessibleFormatEdit.h"
#include "AccessibleHyperlinkLabel.h"
#include "AccessibleToggleButton.h"

#include <QtCore/QCoreApplication>

namespace {

template <class Accessible, class Widget> QAccessibleInterface* create(QObject* object)
{
    auto* widget = qobject_cast<Widget*>(object);
    return widget ? new Accessible(widget) : nullptr;
}

struct Entry {
    QLatin1StringView className;
    QAccessibleInterface* (*create)(QObject*);
};

//! Qt asks for the class of \a object, then for its base class, and so on.
QAccessibleInterface* interfaceFor(const QString& className, QObject* object)
{
    using namespace Qt::StringLiterals;
    static constexpr Entry entries[] = {
        {"ZEFCommandLinkButton"_L1, create<AccessibleCommandLinkButton, ZEFCommandLinkButton>},
        {"ZEFEllipsisLabel"_L1, create<AccessibleEllipsisLabel, ZEFEllipsisLabel>},
        {"ZEFFlatButton"_L1, create<AccessibleFlatButton, ZEFFlatButton>},
        {"ZEFFormatCell"_L1, create<AccessibleFormatCell, ZEFFormatCell>},
        {"ZEFFormatEdit"_L1, create<AccessibleFormatEdit, ZEFFormatEdit>},
        {"ZEFHyperlinkLabel"_L1, create<AccessibleHyperlinkLabel, ZEFHyperlinkLabel>},
        {"ZEFToggleButton"_L1, create<AccessibleToggleButton, ZEFToggleButton>},
    };
    for (const Entry& entry : entries) {
        if (entry.className == className)
            return entry.create(object);
    }
    return nullptr;
}

// Qt forgets its factories together with the application.
void install()
{
    QAccessible::installFactory(interfaceFor);
}
Q_COREAPP_STARTUP_FUNCTION(install)

} // namespace

// The name by which static libraries are made to keep this file; see CMakeLists.txt.
extern "C" void zefuiAccessibility() { }
