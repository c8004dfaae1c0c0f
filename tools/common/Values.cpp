#include "Values.h"

#include "InputFile.h"
#include "JsonFile.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

using namespace Qt::StringLiterals;

namespace {

//! The entries of an object whose values are texts, numbers or booleans; what is wrong otherwise.
bool readDictionary(const QJsonValue& value, const QString& place, Values::Dictionary* dictionary,
                    QString* error)
{
    if (!value.isObject()) {
        *error = place + u" must be an object";
        return false;
    }
    const QJsonObject object = value.toObject();
    for (auto entry = object.constBegin(); entry != object.constEnd(); ++entry) {
        if (!entry.value().isString() && !entry.value().isDouble() && !entry.value().isBool()) {
            *error = place + u": the value of \"" + entry.key() + u"\" must be a text, a number or a boolean";
            return false;
        }
        dictionary->append({entry.key(), entry.value().toVariant().toString()});
    }
    return true;
}

bool fill(const QJsonObject& root, Values* values, QString* error)
{
    for (auto member = root.constBegin(); member != root.constEnd(); ++member) {
        if (member.key() == "properties"_L1) {
            if (!readDictionary(member.value(), u"\"properties\""_s, &values->properties, error))
                return false;
        } else if (member.key() == "dictionaries"_L1) {
            if (!member.value().isArray()) {
                *error = u"\"dictionaries\" must be an array"_s;
                return false;
            }
            const QJsonArray dictionaries = member.value().toArray();
            for (const QJsonValue dictionary : dictionaries) {
                values->dictionaries.emplaceBack();
                if (!readDictionary(dictionary, u"each of the \"dictionaries\""_s,
                                    &values->dictionaries.back(), error))
                    return false;
            }
        } else {
            *error =
                u"unknown member \""_s + member.key() + u"\"; \"dictionaries\" and \"properties\" are known";
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<Values> readValues(const QString& path, QString* error)
{
    const std::optional<QByteArray> contents = readInputFile(path, error);
    return contents ? parseValues(path, *contents, error) : std::nullopt;
}

std::optional<Values> parseValues(const QString& path, const QByteArray& json, QString* error)
{
    const std::optional<QJsonDocument> document = parseJson(path, json, error);
    if (!document)
        return std::nullopt;
    Values values;
    values.path = path;
    if (!document->isObject()) {
        *error = path + u": must hold an object with \"dictionaries\" and \"properties\"";
        return std::nullopt;
    }
    if (!fill(document->object(), &values, error)) {
        *error = path + u": " + *error;
        return std::nullopt;
    }
    const QHash<QString, qint64> lines = keyLines(json, "properties"_L1);
    for (Values::Entry& entry : values.properties)
        entry.line = lines.value(entry.key, entry.line);
    return values;
}
