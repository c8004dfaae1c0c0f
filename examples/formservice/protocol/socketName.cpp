#include "socketName.h"

#include <QtCore/QStandardPaths>

QString defaultSocketName()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
        + QStringLiteral("/zefui-formservice");
}
