#include "formCheck.h"

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>

#include <algorithm>

namespace {

// Far more than people draw, and little enough for the smallest stack.
constexpr int deepestElement = 300;

class FormCheck {
public:
    FormCheck(QIODevice* file, const QStringList& layoutClasses)
        : m_xml(file)
        , m_layoutClasses(layoutClasses)
    {
    }

    bool run(const QStringList& widgetClasses);

private:
    bool startElement();
    bool promotionEnds(QString className, const QStringList& widgetClasses) const;
    // Qt reads the names of elements, unlike their attributes, without regard to case.
    bool isElement(QStringView name) const { return m_xml.name().compare(name, Qt::CaseInsensitive) == 0; }
    QString className() const { return m_xml.attributes().value(QLatin1String("class")).toString(); }

    QXmlStreamReader m_xml;
    const QStringList& m_layoutClasses;
    int m_depth = 0;
    QString m_promoted;
    QSet<QString> m_used;
    QHash<QString, QString> m_extends;
};

bool FormCheck::run(const QStringList& widgetClasses)
{
    while (!m_xml.atEnd()) {
        switch (m_xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++m_depth > deepestElement || !startElement())
                return false;
            break;
        case QXmlStreamReader::EndElement:
            --m_depth;
            break;
        default:
            break;
        }
    }
    return std::all_of(m_used.cbegin(), m_used.cend(),
                       [&](const QString& used) { return promotionEnds(used, widgetClasses); });
}

bool FormCheck::startElement()
{
    if (isElement(u"layout"))
        return m_layoutClasses.contains(className());
    if (isElement(u"widget")) {
        m_used.insert(className());
    } else if (isElement(u"customwidget")) {
        m_promoted.clear();
    } else if (isElement(u"class") || isElement(u"extends")) {
        const bool isClass = isElement(u"class");
        const QString text = m_xml.readElementText(QXmlStreamReader::IncludeChildElements);
        --m_depth;
        if (isClass)
            m_promoted = text;
        else
            m_extends.insert(m_promoted, text);
    }
    return true;
}

bool FormCheck::promotionEnds(QString className, const QStringList& widgetClasses) const
{
    QSet<QString> passed;
    while (!widgetClasses.contains(className) && m_extends.contains(className)) {
        if (passed.contains(className))
            return false;
        passed.insert(className);
        className = m_extends.value(className);
    }
    return true;
}

} // namespace

bool isSafeToBuild(QIODevice* file, const QStringList& layoutClasses, const QStringList& widgetClasses)
{
    return FormCheck(file, layoutClasses).run(widgetClasses);
}
