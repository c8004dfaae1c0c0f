#include "Translation.h"

#include "tools/common/InputFile.h"

#include <QtCore/QFileInfo>
#include <QtCore/QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

QString keyOf(const QString& context, const QString& source, const QString& comment)
{
    const QChar separator(u'\x04');
    return context + separator + source + separator + comment;
}

struct Message {
    QString source;
    QString comment;
    QString translation;
    bool current = true;
};

//! The text of the element with that of its children, such as the forms of a numerus translation.
QString wholeText(QXmlStreamReader& xml)
{
    return xml.readElementText(QXmlStreamReader::IncludeChildElements);
}

Message readMessage(QXmlStreamReader& xml)
{
    Message message;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"source") {
            message.source = wholeText(xml);
        } else if (xml.name() == u"comment") {
            message.comment = wholeText(xml);
        } else if (xml.name() == u"translation") {
            const QStringView type = xml.attributes().value("type"_L1);
            message.current = type != u"vanished" && type != u"obsolete";
            message.translation = wholeText(xml);
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

void readContext(QXmlStreamReader& xml, QSet<QString>* translated)
{
    QString context;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"name") {
            context = wholeText(xml);
        } else if (xml.name() == u"message") {
            const Message message = readMessage(xml);
            if (message.current && !message.translation.trimmed().isEmpty())
                translated->insert(keyOf(context, message.source, message.comment));
        } else {
            xml.skipCurrentElement();
        }
    }
}

} // namespace

bool Translation::covers(const QString& context, const QString& source, const QString& comment) const
{
    return translated.contains(keyOf(context, source, comment))
        || (!comment.isEmpty() && translated.contains(keyOf(context, source, QString())));
}

std::optional<Translation> readTranslation(const QString& path, QString* error)
{
    const std::optional<QByteArray> contents = readInputFile(path, error);
    if (!contents)
        return std::nullopt;
    Translation translation;
    translation.path = path;
    translation.locale = QFileInfo(path).completeBaseName().mid(u"zefmain_"_s.size());
    QXmlStreamReader xml(*contents);
    if (xml.readNextStartElement() && xml.name() != u"TS")
        xml.raiseError(u"is no translation file of Qt"_s);
    while (xml.readNextStartElement()) {
        if (xml.name() == u"context")
            readContext(xml, &translation.translated);
        else
            xml.skipCurrentElement();
    }
    if (!xml.hasError())
        return translation;
    *error = path + u':' + QString::number(xml.lineNumber()) + u": " + xml.errorString().simplified();
    return std::nullopt;
}
