#include "debugOutput.h"

#include <QtCore/QDebug>

void writeDebug(const QString& text)
{
    qDebug().nospace().noquote() << text;
}

QString hexAddress(const void* object)
{
    return QString::number(reinterpret_cast<quintptr>(object), 16);
}
