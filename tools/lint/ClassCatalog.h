#pragma once

#include "Form.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMetaObject>
#include <QtCore/QStringList>

#include <initializer_list>

//! The classes that the library's form loader can create, without creating any.
namespace ClassCatalog {

//! The class of that name, exactly; null when the loader does not know it.
const QMetaObject* find(const QString& className);

//! What the loader makes of the widget: its class, or the class it was promoted from; null for nothing.
const QMetaObject* created(const Form& form, const FormWidget& widget);

//! Whether the class of the widget is promoted in a circle or too often: the form does not load.
bool isPromotedForever(const Form& form, const FormWidget& widget);

//! All classes that the loader creates.
const FormCheck::Classes& formClasses();

/*!
 * The known class whose name is most alike, empty when none is. A name of the library's family is
 * answered by a class of the loader's table if there is one alike.
 */
QString nearest(const QString& className);

//! The layout class whose name is most alike, empty when none is.
QString nearestLayout(const QString& className);

//! The layouts that the loader can create.
QStringList layoutClassNames();

//! The names of Qt's classes, sorted.
QStringList qtClassNames();

//! Whether a new widget of the class takes the keyboard focus, before the form says anything of it.
bool takesFocus(const QMetaObject* meta);

//! Some classes and all that derive from them. A form has many widgets of few classes: each is looked at
//! once.
class Families {
public:
    Families(std::initializer_list<const char*> classNames)
        : m_classNames(classNames)
    {
    }
    bool contain(const QMetaObject* meta) const;

private:
    QList<const char*> m_classNames;
    mutable QHash<const QMetaObject*, bool> m_known;
};

//! Whether \a meta is the class called \a className or derives from it.
bool inherits(const QMetaObject* meta, const char* className);

} // namespace ClassCatalog
