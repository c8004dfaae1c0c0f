#include "AccessibleToggleButton.h"

#include "labelText.h"

#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

namespace {

void toggle(QWidget* button)
{
    button->setProperty("isOn", !button->property("isOn").toBool());
}

} // namespace

AccessibleToggleButton::AccessibleToggleButton(ZEFToggleButton* button)
    : AccessibleLeaf(button, QAccessible::CheckBox, toggleAction(), toggle)
{
}

ZEFToggleButton* AccessibleToggleButton::button() const
{
    return static_cast<ZEFToggleButton*>(widget());
}

QString AccessibleToggleButton::content() const
{
    return readableText(button()->findChild<QLabel*>(u"title"_s, Qt::FindDirectChildrenOnly));
}

QAccessible::State AccessibleToggleButton::state() const
{
    QAccessible::State state = AccessibleLeaf::state();
    state.checkable = true;
    state.checked = button()->isOn();
    return state;
}
