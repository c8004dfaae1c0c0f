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

const QLabel* AccessibleCommandLinkButton::label(const QString& name) const
{
    return button()->findChild<QLabel*>(name, Qt::FindDirectChildrenOnly);
}

QString AccessibleCommandLinkButton::content() const
{
    return readableText(label(u"title"_s));
}

QString AccessibleCommandLinkButton::text(QAccessible::Text t) const
{
    QString given = AccessibleLeaf::text(t);
    if (t == QAccessible::Description && given.isEmpty())
        return readableText(label(u"description"_s));
    if (t == QAccessible::Accelerator && given.isEmpty())
        return button()->shortcut().toString(QKeySequence::NativeText);
    return given;
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
