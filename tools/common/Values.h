#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <optional>
#include <utility>

/*!
 * What a service would fill a form with, read from a JSON file:
 *
 * \code
 * {
 *   "dictionaries": [ { "user": "Ada" }, { "product": "Archive", "count": 3 } ],
 *   "properties": { "nameEdit_text": "Ada", "okButton_enabled": false }
 * }
 * \endcode
 *
 * Both members may be left out. Values are texts, numbers or booleans.
 */
struct Values {
    struct Entry {
        QString key;
        QString value;
        //! Where the key stands; known for properties only.
        qint64 line = 1;
    };
    using Dictionary = QList<Entry>;

    QString path;
    //! Searched front to back.
    QList<Dictionary> dictionaries;
    //! For ZEFUIElement::updateProperties().
    Dictionary properties;
};

//! Without a result, \a error says in one line what is wrong, with the line of a syntax error.
std::optional<Values> readValues(const QString& path, QString* error);

//! The values in \a json; \a path is only named in messages.
std::optional<Values> parseValues(const QString& path, const QByteArray& json, QString* error);
