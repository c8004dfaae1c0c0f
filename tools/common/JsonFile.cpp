#include "JsonFile.h"

#include "InputFile.h"

std::optional<QJsonDocument> readJsonFile(const QString& path, QString* error)
{
    const std::optional<QByteArray> contents = readInputFile(path, error);
    if (!contents)
        return std::nullopt;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(*contents, &parseError);
    if (parseError.error == QJsonParseError::NoError)
        return document;
    const auto line = contents->first(qMin<qsizetype>(parseError.offset, contents->size())).count('\n') + 1;
    *error = path + u':' + QString::number(line) + u": " + parseError.errorString();
    return std::nullopt;
}
