#include "AccessibleLeaf.h"

#include <QtWidgets/QWidget>

AccessibleLeaf::AccessibleLeaf(QWidget* widget, QAccessible::Role role, const QString& action, Act act)
    : QAccessibleWidget(widget, role)
    , m_action(action)
    , m_act(act)
{
}

int AccessibleLeaf::childCount() const
{
    return 0;
}

int AccessibleLeaf::indexOfChild(const QAccessibleInterface*) const
{
    return -1;
}

QAccessibleInterface* AccessibleLeaf::child(int) const
{
    return nullptr;
}

QAccessibleInterface* AccessibleLeaf::childAt(int, int) const
{
    return nullptr;
}

QString AccessibleLeaf::text(QAccessible::Text t) const
{
    const QString own =
        t == QAccessible::Name && widget()->accessibleName().isEmpty() ? content() : QString();
    return own.isEmpty() ? QAccessibleWidget::text(t) : own;
}

QStringList AccessibleLeaf::actionNames() const
{
    QStringList names;
    if (m_act && widget()->isEnabled())
        names.append(m_action);
    return names + QAccessibleWidget::actionNames();
}

void AccessibleLeaf::doAction(const QString& name)
{
    if (!m_act || name != m_action) {
        QAccessibleWidget::doAction(name);
        return;
    }
    const auto act = [widget = widget(), act = m_act] {
        if (widget->isEnabled())
            act(widget);
    };
    QMetaObject::invokeMethod(widget(), act, Qt::QueuedConnection);
}
