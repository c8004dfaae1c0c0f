#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>

//! The contents of resources by path, for instance "forms/login.ui": a folder and a file.
using ResourceContents = QMap<QString, QByteArray>;

//! The same in Qt's binary resource format, uncompressed, for QResource::registerResource().
QByteArray resourceFile(const ResourceContents& contents);
