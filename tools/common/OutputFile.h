#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

/*!
 * Writes a file that the user named, whole or not at all. Folders and devices are refused. Without
 * success, \a error says in one line why.
 */
bool writeOutputFile(const QString& path, const QByteArray& contents, QString* error);
