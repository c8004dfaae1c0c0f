#include "OutputFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>

bool writeOutputFile(const QString& path, const QByteArray& contents, QString* error)
{
    const QFileInfo info(path);
    if (info.isDir()) {
        *error = path + u": is a folder, not a file";
        return false;
    }
    // The whole file takes the place of what stands there, which would be the end of a device.
    if (info.exists() && !info.isFile()) {
        *error = path + u": is not an ordinary file";
        return false;
    }
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() && file.commit())
        return true;
    *error = path + u": " + file.errorString();
    return false;
}
