#pragma once

#include <QtCore/QJsonDocument>
#include <QtCore/QString>

#include <optional>

//! The JSON document of a file; without one, \a error says in one line why, with the line of a syntax error.
std::optional<QJsonDocument> readJsonFile(const QString& path, QString* error);
