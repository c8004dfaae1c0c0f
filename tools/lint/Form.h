#pragma once

#include "Suppression.h"
#include "element/FormCheck.h"

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QMetaObject>
#include <QtCore/QString>

#include <optional>

//! A text of a form and how Qt's form loader translates it.
struct FormText {
    QString text;
    //! Qt's disambiguation of the text.
    QString comment;
    bool translatable = true;
    qint64 line = 0;
};

//! A property that the form sets on a widget.
struct FormProperty {
    QString name;
    //! Only text.text and text.line count when the value is no string.
    FormText value;
    bool isString = false;
    //! What a value consists of: "width" and "height" of a size, "hsizetype" and "vsizetype" of a size
    //! policy.
    QHash<QString, QString> parts;
};

struct FormWidget {
    QString className;
    QString name;
    //! The index of the parent in Form::widgets, -1 for the top widget.
    qsizetype parent = -1;
    qint64 line = 0;
    QList<FormProperty> properties;
    //! What the form loader makes of the widget; null when it creates nothing.
    const QMetaObject* created = nullptr;

    const FormProperty* property(QLatin1String propertyName) const;
};

//! A Qt Designer form as far as the rules want to know it.
struct Form {
    QString path;
    QString className;
    //! In the order of the file: parents before children. Never empty.
    QList<FormWidget> widgets;
    //! Texts that are not properties of widgets: items, pages' titles, actions, string lists.
    QList<FormText> otherTexts;
    //! From the class of a promoted widget to the class that it extends.
    QHash<QString, QString> promotedClasses;
    Suppressions suppressions;
    //! What keeps the library from loading the form.
    QList<FormFault> faults;
};

//! Without a result, \a error says in one line what is wrong, with the line where it is.
std::optional<Form> readForm(const QString& path, QString* error);

//! The form in \a contents; \a path is only named in messages.
std::optional<Form> parseForm(const QString& path, const QByteArray& contents, QString* error);
