#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QVariant>

/*!
 * What the service answers, one line: either how the form was closed and the values that were asked
 * for, or an error.
 */
namespace FormAnswer {

//! \a values maps <widget>.<property> to its value; an invalid one becomes null.
QByteArray closed(int selection, const QVariantMap& values);
//! \a text may hold anything; the line stays one line.
QByteArray error(const QString& text);

//! Whether \a line is an answer that tells an error, or no answer at all.
bool isError(const QByteArray& line);

} // namespace FormAnswer
