#pragma once

#include <QtCore/QStringList>

class QIODevice;

/*!
 * Whether Qt's form loader builds the form that \a file holds, or at least refuses it in an orderly way.
 * Three mistakes would end the process instead: a layout of a class that is none of \a layoutClasses,
 * elements nested so deeply that they use up the stack, and a widget whose class is none of \a widgetClasses
 * and promoted in a circle. Reads the file to its end.
 */
bool isSafeToBuild(QIODevice* file, const QStringList& layoutClasses, const QStringList& widgetClasses);
