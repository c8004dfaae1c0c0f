#pragma once

#include <QtCore/QList>
#include <QtCore/QMetaObject>
#include <QtCore/QString>

class QWidget;

//! A class of this library that forms may name.
struct CustomClass {
    QLatin1String name;
    const QMetaObject* metaObject;
    QWidget* (*create)(QWidget* parent);
};

//! The one place that knows these classes: the loader creates them, and the form checker knows them by it.
const QList<CustomClass>& customClasses();
