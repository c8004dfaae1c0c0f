#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/*!
 * The contents of a file that the user named. Without a result, \a error says in one line why. Folders,
 * devices and files of more than 32 MiB are refused before they are read.
 */
std::optional<QByteArray> readInputFile(const QString& path, QString* error);

//! readInputFile(), and the contents must be UTF-8 text.
std::optional<QString> readTextFile(const QString& path, QString* error);
