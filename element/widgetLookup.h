#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtWidgets/QWidget>

//! Qt takes a null name for "any name"; a name of a form that is empty means widgets without a name.
inline QString exactName(const QString& name)
{
    return name.isNull() ? QString(QLatin1String("")) : name;
}

//! All widgets of that name below \a host, in Qt's child order; none when \a host is null.
inline QList<QWidget*> widgetsNamed(const QWidget* host, const QString& name)
{
    return host ? host->findChildren<QWidget*>(exactName(name)) : QList<QWidget*>();
}

//! The first widget of that name below \a host; null when there is none.
inline QWidget* firstWidgetNamed(const QWidget* host, const QString& name)
{
    return host ? host->findChild<QWidget*>(exactName(name)) : nullptr;
}
