#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

/*!
 * The children of \a parent that are there to be looked at. QObject::findChildren() crashes while some of
 * them are being deleted, and a slot of destroyed() may well ask the form for its other widgets: what is
 * deleting its children counts as gone already.
 */
inline QObjectList livingChildren(const QObject* parent)
{
    const auto isDeletingChildren = [](const QObject* object) {
        return object->children().contains(nullptr);
    };
    if (isDeletingChildren(parent))
        return {};
    QObjectList living = parent->children();
    living.removeIf(isDeletingChildren);
    return living;
}

template <class Type> void appendDescendants(const QObject* parent, QList<Type*>& found)
{
    for (QObject* child : livingChildren(parent)) {
        if (auto* descendant = qobject_cast<Type*>(child))
            found.append(descendant);
        appendDescendants(child, found);
    }
}

//! Every \a Type below \a parent, in the order of findChildren().
template <class Type> QList<Type*> descendants(const QObject* parent)
{
    QList<Type*> found;
    appendDescendants(parent, found);
    return found;
}

//! All widgets of that name below \a host, in the order of findChildren(); none when \a host is null. An
//! empty name means widgets without a name.
inline QList<QWidget*> widgetsNamed(const QWidget* host, const QString& name)
{
    if (!host)
        return {};
    QList<QWidget*> widgets = descendants<QWidget>(host);
    widgets.removeIf([&name](const QWidget* widget) { return widget->objectName() != name; });
    return widgets;
}

//! The widget of that name that findChild() takes, which asks all children before their children; null when
//! \a parent is null or there is none.
inline QWidget* firstWidgetNamed(const QObject* parent, const QString& name)
{
    if (!parent)
        return nullptr;
    const QObjectList children = livingChildren(parent);
    for (QObject* child : children) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && widget->objectName() == name)
            return widget;
    }
    for (const QObject* child : children) {
        if (QWidget* widget = firstWidgetNamed(child, name))
            return widget;
    }
    return nullptr;
}
