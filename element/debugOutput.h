#pragma once

#include <QtCore/QString>

/*!
 * Writes \a text to Qt's debug output as it stands. Texts hold names and values of forms and clients;
 * they are data and never a format, whatever percent signs they hold.
 */
void writeDebug(const QString& text);

//! \a object's address as the log writes it.
QString hexAddress(const void* object);
