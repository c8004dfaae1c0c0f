#include "FormCheck.h"

#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <limits>

namespace {

// Qt makes room for each row and column up to the last one.
constexpr int mostRows = 10'000;

// Qt reads the names of elements, unlike their attributes, without regard to case.
bool isElement(const QXmlStreamReader& xml, QStringView name)
{
    return xml.name().compare(name, Qt::CaseInsensitive) == 0;
}

QString attribute(const QXmlStreamReader& xml, const char* name)
{
    return xml.attributes().value(QLatin1String(name)).toString();
}

} // namespace

void FormCheck::look(const QXmlStreamReader& xml)
{
    switch (xml.tokenType()) {
    case QXmlStreamReader::StartElement:
        startElement(xml);
        break;
    case QXmlStreamReader::EndElement:
        endElement(xml);
        break;
    case QXmlStreamReader::Characters:
    case QXmlStreamReader::EntityReference:
        if (m_takesText)
            m_text += xml.text();
        break;
    default:
        break;
    }
}

void FormCheck::startElement(const QXmlStreamReader& xml)
{
    if (++m_depth > deepest && !m_isTooDeep) {
        m_isTooDeep = true;
        m_faults.append(
            {xml.lineNumber(),
             u"more than " + QString::number(deepest) + u" elements are nested here, which is too deep"});
    }
    m_takesText = false;
    if (isElement(xml, u"property")) {
        const QString name = attribute(xml, "name");
        m_isCount = name == u"rowCount" || name == u"columnCount";
    } else if (isElement(xml, u"item")) {
        checkPlace(xml);
    } else if (isElement(xml, u"widget")) {
        const QString className = attribute(xml, "class");
        if (!m_classes.widgets.contains(className) && !m_usedNames.contains(className)) {
            m_usedNames.insert(className);
            m_used.append({className, attribute(xml, "name"), xml.lineNumber()});
        }
    } else if (isElement(xml, u"layout")) {
        const QString className = attribute(xml, "class");
        if (!m_classes.layouts.contains(className)) {
            m_faults.append({xml.lineNumber(),
                             u"the loader cannot create the layout class " + className + u" of \""
                                 + attribute(xml, "name") + u'"',
                             className});
        }
    } else {
        m_takesText = isElement(xml, u"class") || isElement(xml, u"extends")
            || (m_isCount && isElement(xml, u"number"));
        m_text.clear();
    }
}

void FormCheck::endElement(const QXmlStreamReader& xml)
{
    --m_depth;
    if (!m_takesText)
        return;
    m_takesText = false;
    // A number of rows: the only other text that is taken. The class of the form itself does no harm here.
    if (isElement(xml, u"class"))
        m_promoted = m_text;
    else if (isElement(xml, u"extends"))
        m_bases.insert(m_promoted, m_text);
    else if (m_text.toInt() > mostRows)
        m_faults.append(
            {xml.lineNumber(), u"a table has more than " + QString::number(mostRows) + u" rows or columns"});
}

//! An item of a layout: Qt takes its row and column as they are.
void FormCheck::checkPlace(const QXmlStreamReader& xml)
{
    const auto isOutside = [&](const char* name, int least) {
        const int value = xml.attributes().value(QLatin1String(name)).toInt();
        return value < least || value > mostRows;
    };
    constexpr int anySpan = std::numeric_limits<int>::min();
    if (isOutside("row", 0) || isOutside("column", 0) || isOutside("rowspan", anySpan)
        || isOutside("colspan", anySpan)) {
        m_faults.append({xml.lineNumber(),
                         u"an item lies outside of the rows and columns 0 to " + QString::number(mostRows)});
    }
}

//! Each class is followed once: what is known of its base is known of it.
const FormCheck::UsedClass* FormCheck::firstEndlessPromotion() const
{
    QHash<QString, qsizetype> promotionCounts;
    for (const UsedClass& used : m_used) {
        QStringList passed;
        QString className = used.className;
        while (!m_classes.widgets.contains(className) && m_bases.contains(className)
               && !promotionCounts.contains(className)) {
            if (passed.size() == deepest)
                return &used;
            passed.append(className);
            className = m_bases.value(className);
        }
        qsizetype count = promotionCounts.value(className);
        for (auto promoted = passed.crbegin(); promoted != passed.crend(); ++promoted)
            promotionCounts.insert(*promoted, ++count);
        if (count > deepest)
            return &used;
    }
    return nullptr;
}

QList<FormFault> FormCheck::faults() const
{
    QList<FormFault> faults = m_faults;
    // The promotions stand at the end of a form.
    if (const UsedClass* used = firstEndlessPromotion()) {
        faults.append({used->line,
                       u"the loader cannot create the class " + used->className + u" of \"" + used->objectName
                           + u"\", which is promoted in a circle or more than " + QString::number(deepest)
                           + u" times"});
    }
    std::stable_sort(faults.begin(), faults.end(),
                     [](const FormFault& a, const FormFault& b) { return a.line < b.line; });
    return faults;
}

QList<FormFault> FormCheck::faultsOf(const QByteArray& contents, const Classes& classes)
{
    QXmlStreamReader xml(contents);
    FormCheck check(classes);
    while (!xml.atEnd()) {
        xml.readNext();
        check.look(xml);
    }
    return check.faults();
}
