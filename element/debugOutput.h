#pragma once

#include <QtCore/QString>

class QWidget;

/*!
 * Writes \a text to Qt's debug output as it stands. Texts hold names and values of forms and clients;
 * they are data and never a format, whatever percent signs they hold.
 */
void writeDebug(const QString& text);

//! \a value as the debug output may show it: asterisks for every property of a line edit that hides its text.
QString shownValue(const QWidget* widget, const QString& value);

//! \a object's address as the log writes it.
QString hexAddress(const void* object);
