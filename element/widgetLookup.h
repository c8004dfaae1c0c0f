#pragma once

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

/*!
 * What is deleting its children counts as gone already. QObject::findChildren() crashes while that happens,
 * and a slot of destroyed() may well ask the form for its other widgets.
 */
inline bool isDeletingChildren(const QObject* object)
{
    return object->children().contains(nullptr);
}

//! Calls \a visit with every object below \a parent, in the order of findChildren(). \a visit must not run
//! code of others.
template <class Visit> void forEachDescendant(const QObject* parent, const Visit& visit)
{
    if (isDeletingChildren(parent))
        return;
    for (QObject* child : parent->children()) {
        if (isDeletingChildren(child))
            continue;
        visit(child);
        forEachDescendant(child, visit);
    }
}

//! All widgets below \a host, in the order of findChildren(). Guarded: what the caller does with one may
//! delete others.
inline QList<QPointer<QWidget>> widgetsBelow(const QWidget* host)
{
    QList<QPointer<QWidget>> widgets;
    forEachDescendant(host, [&](QObject* object) {
        if (object->isWidgetType())
            widgets.append(static_cast<QWidget*>(object));
    });
    return widgets;
}

//! All widgets of that name below \a host, in the order of findChildren(); none when \a host is null. An
//! empty name means widgets without a name.
inline QList<QPointer<QWidget>> widgetsNamed(const QWidget* host, const QString& name)
{
    QList<QPointer<QWidget>> widgets;
    if (!host)
        return widgets;
    forEachDescendant(host, [&](QObject* object) {
        if (object->isWidgetType() && object->objectName() == name)
            widgets.append(static_cast<QWidget*>(object));
    });
    return widgets;
}

//! The widget of that name that findChild() takes, which asks all children before their children; null when
//! \a parent is null or there is none.
inline QWidget* firstWidgetNamed(const QObject* parent, const QString& name)
{
    if (!parent || isDeletingChildren(parent))
        return nullptr;
    for (QObject* child : parent->children()) {
        if (child->isWidgetType() && child->objectName() == name && !isDeletingChildren(child))
            return static_cast<QWidget*>(child);
    }
    for (const QObject* child : parent->children()) {
        if (QWidget* widget = firstWidgetNamed(child, name))
            return widget;
    }
    return nullptr;
}
