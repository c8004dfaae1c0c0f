#include "AccessibleCommandLinkButton.h"

#include "labelText.h"

#include <widgets/pressSpace.h>

#include <QtWidgets/QLabel>

using namespace Qt::StringLiterals;

AccessibleCommandLinkButton::AccessibleCommandLinkButton(ZEFCommandLinkButton* button)
    : AccessibleLeaf(button, QAccessible::Button, pressAction(), pressSpace)
{
}

ZEFCommandLinkButton* AccessibleCommandLinkButton::button() const
{
    return static_cast<ZEFCommandLinkButton*>(widget());
}

QString AccessibleCommandLinkButton::text(QAccessible::Text t) const
{
    const QString given = AccessibleLeaf::text(t);
    if (!given.isEmpty())
        return given;
    switch (t) {
    case QAccessible::Name:
        return readableText(button()->findChild<QLabel*>(u"title"_s, Qt::FindDirectChildrenOnly));
    case QAccessible::Description:
        return readableText(button()->findChild<QLabel*>(u"description"_s, Qt::FindDirectChildrenOnly));
    case QAccessible::Accelerator:
        return button()->shortcut().toString(QKeySequence::NativeText);
    default:
        return {};
    }
}

QAccessible::State AccessibleCommandLinkButton::state() const
{
    QAccessible::State state = AccessibleLeaf::state();
    state.pressed = button()->isDown();
    state.defaultButton = button()->isDefault();
    return state;
}

QStringList AccessibleCommandLinkButton::keyBindingsForAction(const QString& name) const
{
    if (name != pressAction() || button()->shortcut().isEmpty())
        return AccessibleLeaf::keyBindingsForAction(name);
    return {button()->shortcut().toString()};
}
