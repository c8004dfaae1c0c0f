#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

/*!
 * The translation \a path.qm, or \a path.ts compiled by Qt's lrelease when that is the newer one or the
 * only one. Without a result, \a error says in one line what is wrong.
 */
std::optional<QByteArray> compiledTranslation(const QString& path, QString* error);
