#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QJsonDocument>
#include <QtCore/QList>
#include <QtCore/QString>

#include <optional>

/*!
 * The JSON document \a json; without one, \a error says in one line why, with the line of a syntax error.
 * \a path is only named in messages.
 */
std::optional<QJsonDocument> parseJson(const QString& path, const QByteArray& json, QString* error);

//! The lines of the keys in the object that is the \a member of the root object of valid JSON.
QHash<QString, qint64> keyLines(const QByteArray& json, QLatin1String member);

//! The lines of the strings in the array that is the root of valid JSON, in their order.
QList<qint64> stringLines(const QByteArray& json);
