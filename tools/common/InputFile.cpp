#include "InputFile.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QStringDecoder>

namespace {

constexpr qint64 mebibyte = qint64(1024) * 1024;
constexpr qint64 largestInput = 32 * mebibyte;

} // namespace

std::optional<QByteArray> readInputFile(const QString& path, QString* error)
{
    const QFileInfo info(path);
    if (!info.exists()) {
        *error = path + u": there is no such file";
        return std::nullopt;
    }
    if (info.isDir()) {
        *error = path + u": is a folder, not a file";
        return std::nullopt;
    }
    // A pipe or a device may never end.
    if (!info.isFile()) {
        *error = path + u": is not an ordinary file";
        return std::nullopt;
    }
    if (info.size() > largestInput) {
        *error = path + u": is larger than " + QString::number(largestInput / mebibyte) + u" MiB";
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = path + u": " + file.errorString();
        return std::nullopt;
    }
    const QByteArray contents = file.read(largestInput);
    if (file.error() != QFileDevice::NoError) {
        *error = path + u": " + file.errorString();
        return std::nullopt;
    }
    return contents;
}

std::optional<QString> readTextFile(const QString& path, QString* error)
{
    const std::optional<QByteArray> contents = readInputFile(path, error);
    if (!contents)
        return std::nullopt;
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(*contents);
    if (decoder.hasError()) {
        *error = path + u": is not UTF-8 text";
        return std::nullopt;
    }
    return text;
}
