#include "FormAnswer.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

namespace {

QJsonValue jsonValue(const QVariant& value)
{
    switch (value.typeId()) {
    case QMetaType::UnknownType:
        return QJsonValue::Null;
    case QMetaType::Bool:
        return value.toBool();
    case QMetaType::Int:
    case QMetaType::Double:
        return value.toDouble();
    default:
        return value.toString();
    }
}

QByteArray line(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

} // namespace

QByteArray FormAnswer::closed(int selection, const QVariantMap& values)
{
    QJsonObject object;
    for (auto value = values.begin(); value != values.end(); ++value)
        object.insert(value.key(), jsonValue(value.value()));
    return line({{QStringLiteral("selection"), selection}, {QStringLiteral("values"), object}});
}

QByteArray FormAnswer::error(const QString& text)
{
    return line({{QStringLiteral("error"), text}});
}

bool FormAnswer::isError(const QByteArray& line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    return !document.isObject() || document.object().contains(QStringLiteral("error"));
}
