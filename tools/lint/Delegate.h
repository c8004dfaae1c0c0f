#pragma once

#include "Suppression.h"

#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

struct DelegateParameter {
    //! As written, without blanks beside signs: "ZEFPipeFacilityInvocationContext*", "const QVariant&".
    QString type;
    QString name;
};

//! A method that Qt can call by name.
struct DelegateMethod {
    QString name;
    QList<DelegateParameter> parameters;
    qint64 line = 1;
};

//! The methods of the delegate classes in one file.
struct Delegate {
    QString path;
    QList<DelegateMethod> methods;
    //! A comment speaks of its own lines and the next.
    Suppressions suppressions;
};

/*!
 * Reads a C++ header, or a JSON array of signatures such as
 * "ok_clicked(ZEFPipeFacilityInvocationContext* context, QVariant nameEdit_text)". Of a header the slots,
 * signals and Q_INVOKABLE methods of all classes are taken. Without a result, \a error says in one line
 * what is wrong.
 */
std::optional<Delegate> readDelegate(const QString& path, QString* error);
