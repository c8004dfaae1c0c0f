#include "JsonFile.h"

#include <QtCore/QJsonArray>

namespace {

//! A string in valid JSON, with its quotation marks.
struct JsonString {
    QByteArrayView literal;
    qint64 line;
    //! How many arrays and objects it is inside of.
    int depth;
    bool isKey;
};

qsizetype endOfString(const QByteArray& json, qsizetype start)
{
    for (qsizetype i = start + 1; i < json.size(); ++i) {
        if (json.at(i) == '\\')
            ++i;
        else if (json.at(i) == '"')
            return i + 1;
    }
    return json.size();
}

bool isFollowedByColon(const QByteArray& json, qsizetype position)
{
    while (position < json.size() && QByteArrayView(" \t\r\n").contains(json.at(position)))
        ++position;
    return position < json.size() && json.at(position) == ':';
}

//! Qt's reader does not tell where the values stand.
template <typename Visit> void forEachString(const QByteArray& json, Visit visit)
{
    qint64 line = 1;
    int depth = 0;
    for (qsizetype i = 0; i < json.size(); ++i) {
        const char character = json.at(i);
        if (character == '\n') {
            ++line;
        } else if (character == '{' || character == '[') {
            ++depth;
        } else if (character == '}' || character == ']') {
            --depth;
        } else if (character == '"') {
            const qsizetype end = endOfString(json, i);
            visit(JsonString{QByteArrayView(json).sliced(i, end - i), line, depth,
                             isFollowedByColon(json, end)});
            i = end - 1;
        }
    }
}

QString decoded(QByteArrayView literal)
{
    return QJsonDocument::fromJson('[' + literal.toByteArray() + ']').array().at(0).toString();
}

} // namespace

std::optional<QJsonDocument> parseJson(const QString& path, const QByteArray& json, QString* error)
{
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(json, &parseError);
    if (parseError.error == QJsonParseError::NoError)
        return document;
    const auto line = json.first(qMin<qsizetype>(parseError.offset, json.size())).count('\n') + 1;
    *error = path + u':' + QString::number(line) + u": " + parseError.errorString();
    return std::nullopt;
}

QHash<QString, qint64> keyLines(const QByteArray& json, QLatin1String member)
{
    QHash<QString, qint64> lines;
    bool inMember = false;
    forEachString(json, [&](const JsonString& string) {
        if (!string.isKey)
            return;
        if (string.depth == 1)
            inMember = decoded(string.literal) == member;
        else if (string.depth == 2 && inMember)
            lines.insert(decoded(string.literal), string.line);
    });
    return lines;
}

QList<qint64> stringLines(const QByteArray& json)
{
    QList<qint64> lines;
    forEachString(json, [&](const JsonString& string) {
        if (string.depth == 1)
            lines.append(string.line);
    });
    return lines;
}
