#pragma once

#include <QtGui/QAccessible>

//! Tells assistive technology, if any is there, that \a object has changed.
inline void announceChange(QObject* object, QAccessible::Event change)
{
    QAccessibleEvent event(object, change);
    QAccessible::updateAccessibility(&event);
}

/*!
 * Keeps changes from assistive technology for the length of a scope: those of a widget inside another one, of
 * which it sees only the outer one.
 */
class WithoutAccessibleChanges {
public:
    WithoutAccessibleChanges()
        : m_active(QAccessible::isActive())
    {
        if (m_active)
            m_handler = QAccessible::installUpdateHandler([](QAccessibleEvent*) {});
    }
    ~WithoutAccessibleChanges()
    {
        if (m_active)
            QAccessible::installUpdateHandler(m_handler);
    }

private:
    Q_DISABLE_COPY_MOVE(WithoutAccessibleChanges)
    const bool m_active;
    QAccessible::UpdateHandler m_handler = nullptr;
};
