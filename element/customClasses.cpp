#include "customClasses.h"

#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFToggleButton.h>

namespace {

template <class Widget> QWidget* create(QWidget* parent)
{
    return new Widget(parent);
}

template <class Widget> CustomClass customClass(const char* name)
{
    return {QLatin1String(name), &Widget::staticMetaObject, create<Widget>};
}

} // namespace

// ZEFStdButton, ZEFStdSSButton, ZEFStdSSCheckbox and ZEFCalendarWidget stay out of it on purpose: forms
// must not create them.
const QList<CustomClass>& customClasses()
{
    static const QList<CustomClass> classes = {
        customClass<ZEFCommandLinkButton>("ZEFCommandLinkButton"),
        customClass<ZEFToggleButton>("ZEFToggleButton"),
        customClass<ZEFFormatCell>("ZEFFormatCell"),
        customClass<ZEFFormatEdit>("ZEFFormatEdit"),
        customClass<ZEFEllipsisLabel>("ZEFEllipsisLabel"),
        customClass<ZEFHyperlinkLabel>("ZEFHyperlinkLabel"),
        customClass<ZEFFlatButton>("ZEFFlatButton"),
        customClass<ZEFLightStdSSButton>("ZEFLightStdSSButton"),
        customClass<ZEFLightStdSSCheckbox>("ZEFLightStdSSCheckbox"),
        customClass<ZEFLightStdButton>("ZEFLightStdButton"),
    };
    return classes;
}
