#pragma once

#include <ZEFTest.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

using namespace Qt::StringLiterals;

//! What assistive technology sees of \a object; the class of the interface belongs to the library.
inline QAccessibleInterface* seen(QObject* object)
{
    return QAccessible::queryAccessibleInterface(object);
}

inline QString nameOf(QObject* object)
{
    return seen(object)->text(QAccessible::Name);
}

inline QString descriptionOf(QObject* object)
{
    return seen(object)->text(QAccessible::Description);
}

inline QStringList actionsOf(QObject* object)
{
    return seen(object)->actionInterface()->actionNames();
}

inline void act(QObject* object, const QString& action)
{
    seen(object)->actionInterface()->doAction(action);
}

// The names by which Qt calls the actions
inline const QString Press = QAccessibleActionInterface::pressAction();
inline const QString Toggle = QAccessibleActionInterface::toggleAction();
