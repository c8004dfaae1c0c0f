#include "Report.h"

#include "Rules.h"

#include <ZEFUIVersion.h>

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QUrl>

using namespace Qt::StringLiterals;

namespace {

//! Texts of a form may hold line breaks and terminal controls.
QString onOneLine(QString text)
{
    for (QChar& character : text) {
        if (character.category() == QChar::Other_Control || character.category() == QChar::Separator_Line
            || character.category() == QChar::Separator_Paragraph)
            character = u' ';
    }
    return text;
}

QString uriOf(const QString& path)
{
    if (QDir::isAbsolutePath(path))
        return QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded);
    // Not as a QUrl, which refuses a colon that might stand behind a scheme.
    return QString::fromLatin1(QUrl::toPercentEncoding(QDir::fromNativeSeparators(path), "/"));
}

QJsonObject sarifRule(const Rule& rule)
{
    return {{u"id"_s, rule.name},
            {u"shortDescription"_s, QJsonObject{{u"text"_s, rule.summary}}},
            {u"defaultConfiguration"_s, QJsonObject{{u"level"_s, u"warning"_s}}}};
}

QJsonObject sarifResult(const Finding& finding, const QStringList& ruleNames)
{
    const QJsonObject location{
        {u"physicalLocation"_s,
         QJsonObject{{u"artifactLocation"_s, QJsonObject{{u"uri"_s, uriOf(finding.file)}}},
                     {u"region"_s, QJsonObject{{u"startLine"_s, finding.line}}}}}};
    return {{u"ruleId"_s, finding.rule},
            {u"ruleIndex"_s, ruleNames.indexOf(finding.rule)},
            {u"level"_s, u"warning"_s},
            {u"message"_s, QJsonObject{{u"text"_s, finding.message}}},
            {u"locations"_s, QJsonArray{location}}};
}

} // namespace

QByteArray textReport(const Findings& findings)
{
    QByteArray report;
    for (const Finding& finding : findings) {
        const QString line = finding.file + u':' + QString::number(finding.line) + u": " + finding.rule
            + u": " + finding.message;
        report += onOneLine(line).toUtf8() + '\n';
    }
    return report;
}

QByteArray jsonReport(const Findings& findings)
{
    QJsonArray list;
    for (const Finding& finding : findings) {
        list.append(QJsonObject{{u"file"_s, finding.file},
                                {u"line"_s, finding.line},
                                {u"rule"_s, finding.rule},
                                {u"message"_s, finding.message}});
    }
    return QJsonDocument(QJsonObject{{u"findings"_s, list}}).toJson();
}

QByteArray sarifReport(const Findings& findings)
{
    QStringList ruleNames;
    QJsonArray ruleList;
    for (const Rule& rule : rules()) {
        ruleNames.append(rule.name);
        ruleList.append(sarifRule(rule));
    }
    QJsonArray results;
    for (const Finding& finding : findings)
        results.append(sarifResult(finding, ruleNames));
    const QJsonObject driver{{u"name"_s, u"zefui-lint"_s},
                             {u"version"_s, QStringLiteral(ZEFUI_VERSION_STRING)},
                             {u"rules"_s, ruleList}};
    const QJsonObject run{{u"tool"_s, QJsonObject{{u"driver"_s, driver}}}, {u"results"_s, results}};
    return QJsonDocument(QJsonObject{{u"$schema"_s, u"https://json.schemastore.org/sarif-2.1.0.json"_s},
                                     {u"version"_s, u"2.1.0"_s},
                                     {u"runs"_s, QJsonArray{run}}})
        .toJson();
}
