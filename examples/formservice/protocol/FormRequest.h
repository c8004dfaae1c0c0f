#pragma once

#include <ZEFDictionary.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

//! What a client asks for: one form, filled and shown. docs/form-service-protocol.md describes the members.
struct FormRequest {
    QString form;
    QString locale;
    QString title;
    std::vector<ZEFDictionary> dictionaries;
    ZEFDictionary values;
    QStringList shown;
    QStringList hidden;
    QStringList enabled;
    QStringList disabled;
    //! Widget name to dictionary key, for each of the three kinds of conditional display.
    ZEFDictionary displayedBy;
    ZEFDictionary shownIf;
    ZEFDictionary enabledIf;
    QString focus;
    //! What to answer with, as <widget>.<property>.
    QStringList returned;

    /*!
     * The request that \a line holds, one JSON object in UTF-8. When it holds none, \a error says why in
     * one line, and the request is not to be used; otherwise \a error is empty.
     */
    static FormRequest fromJson(const QByteArray& line, QString* error);
};
