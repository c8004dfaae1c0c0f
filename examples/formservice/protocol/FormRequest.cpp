#include "FormRequest.h"

#include <QtCore/QHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <functional>
#include <utility>

namespace {

constexpr qsizetype longestLocale = 64;
constexpr qsizetype longestQuote = 60;

//! \a text as a message quotes it: long texts are cut.
QString quoted(const QString& text)
{
    return u'"' + (text.size() > longestQuote ? text.first(longestQuote) + u'…' : text) + u'"';
}

/*!
 * What "set" reaches. Others would let a client break out of its texts: a style sheet opens files, a text
 * format makes markup of the next text, a new object name takes the clicks of another widget.
 */
const QStringList& clientProperties()
{
    static const QStringList properties = {
        QStringLiteral("checked"),  QStringLiteral("currentIndex"), QStringLiteral("currentText"),
        QStringLiteral("enabled"),  QStringLiteral("plainText"),    QStringLiteral("placeholderText"),
        QStringLiteral("readOnly"), QStringLiteral("text"),         QStringLiteral("title"),
        QStringLiteral("value"),    QStringLiteral("visible"),
    };
    return properties;
}

//! Reads the members of one request and remembers the first thing that was wrong.
class MemberReader {
public:
    QString error() const { return m_error; }

    void fail(const QString& error)
    {
        if (m_error.isEmpty())
            m_error = error;
    }

    QString text(const QString& where, const QJsonValue& value)
    {
        if (!value.isString())
            fail(where + u" must be a text");
        return value.toString();
    }

    QString formName(const QString& where, const QJsonValue& value)
    {
        QString name = text(where, value);
        if (name.isEmpty())
            fail(where + u" must not be empty");
        if (name.contains(u'/') || name.contains(u'\\'))
            fail(where + u" must be a name, not a path: " + quoted(name));
        return name;
    }

    QString localeName(const QString& where, const QJsonValue& value)
    {
        QString name = text(where, value);
        if (name.size() > longestLocale)
            fail(where + u" is longer than " + QString::number(longestLocale) + u" characters");
        return name;
    }

    QStringList names(const QString& where, const QJsonValue& value)
    {
        if (!value.isArray())
            fail(where + u" must be a list");
        QStringList names;
        const QJsonArray entries = value.toArray();
        for (const QJsonValue entry : entries)
            names.append(text(u"each entry of " + where, entry));
        return names;
    }

    QStringList propertyNames(const QString& where, const QJsonValue& value)
    {
        QStringList properties = names(where, value);
        for (const QString& name : std::as_const(properties)) {
            if (!name.contains(u'.'))
                fail(where + u": " + quoted(name) + u" is not of the form <widget>.<property>");
        }
        return properties;
    }

    ZEFDictionary dictionary(const QString& where, const QJsonValue& value)
    {
        if (!value.isObject())
            fail(where + u" must be an object");
        ZEFDictionary dictionary;
        const QJsonObject entries = value.toObject();
        for (auto entry = entries.begin(); entry != entries.end(); ++entry)
            dictionary.setString(entry.key(), text(where + u": the value of " + quoted(entry.key()), *entry));
        return dictionary;
    }

    ZEFDictionary propertyValues(const QString& where, const QJsonValue& value)
    {
        ZEFDictionary values = dictionary(where, value);
        const QStringList keys = values.keys();
        for (const QString& key : keys) {
            if (!key.contains(u'_'))
                fail(where + u": " + quoted(key) + u" is not of the form <widget>_<property>");
            else if (!clientProperties().contains(key.section(u'_', 1, 1)))
                fail(where + u": " + quoted(key) + u" names no property that a client may set");
        }
        return values;
    }

    std::vector<ZEFDictionary> dictionaries(const QString& where, const QJsonValue& value)
    {
        if (!value.isArray())
            fail(where + u" must be a list");
        std::vector<ZEFDictionary> result;
        const QJsonArray entries = value.toArray();
        for (const QJsonValue entry : entries)
            result.push_back(dictionary(u"each entry of " + where, entry));
        return result;
    }

private:
    QString m_error;
};

using ReadMember =
    std::function<void(FormRequest&, MemberReader&, const QString& where, const QJsonValue& value)>;

//! Stores what \a read makes of a member in \a field of the request.
template <typename Field, typename Value>
ReadMember into(Field FormRequest::*field, Value (MemberReader::*read)(const QString&, const QJsonValue&))
{
    return [field, read](FormRequest& request, MemberReader& reader, const QString& where,
                         const QJsonValue& value) { request.*field = (reader.*read)(where, value); };
}

const QHash<QString, ReadMember>& members()
{
    static const QHash<QString, ReadMember> table = {
        {QStringLiteral("form"), into(&FormRequest::form, &MemberReader::formName)},
        {QStringLiteral("locale"), into(&FormRequest::locale, &MemberReader::localeName)},
        {QStringLiteral("title"), into(&FormRequest::title, &MemberReader::text)},
        {QStringLiteral("dictionaries"), into(&FormRequest::dictionaries, &MemberReader::dictionaries)},
        {QStringLiteral("set"), into(&FormRequest::values, &MemberReader::propertyValues)},
        {QStringLiteral("show"), into(&FormRequest::shown, &MemberReader::names)},
        {QStringLiteral("hide"), into(&FormRequest::hidden, &MemberReader::names)},
        {QStringLiteral("enable"), into(&FormRequest::enabled, &MemberReader::names)},
        {QStringLiteral("disable"), into(&FormRequest::disabled, &MemberReader::names)},
        {QStringLiteral("display"), into(&FormRequest::displayedBy, &MemberReader::dictionary)},
        {QStringLiteral("showIf"), into(&FormRequest::shownIf, &MemberReader::dictionary)},
        {QStringLiteral("enableIf"), into(&FormRequest::enabledIf, &MemberReader::dictionary)},
        {QStringLiteral("focus"), into(&FormRequest::focus, &MemberReader::text)},
        {QStringLiteral("return"), into(&FormRequest::returned, &MemberReader::propertyNames)},
    };
    return table;
}

} // namespace

FormRequest FormRequest::fromJson(const QByteArray& line, QString* error)
{
    FormRequest request;
    MemberReader reader;
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(line, &parseError);
    if (parseError.error != QJsonParseError::NoError)
        reader.fail(QStringLiteral("not JSON: %1 at byte %2")
                        .arg(parseError.errorString(), QString::number(parseError.offset)));
    else if (!document.isObject())
        reader.fail(QStringLiteral("a request must be a JSON object"));

    const QJsonObject object = document.object();
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (const auto read = members().constFind(member.key()); read != members().cend())
            (*read)(request, reader, u'"' + member.key() + u'"', *member);
        else
            reader.fail(u"unknown member " + quoted(member.key()));
    }
    if (!object.contains(QStringLiteral("form")))
        reader.fail(QStringLiteral("\"form\" is missing"));
    *error = reader.error();
    return request;
}
