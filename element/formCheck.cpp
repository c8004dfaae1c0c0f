#include "formCheck.h"

#include <QtCore/QXmlStreamReader>

namespace {

// Far more than people draw, and little enough for the smallest stack.
constexpr int deepestElement = 300;

} // namespace

bool isSafeToBuild(QIODevice* file, const QStringList& layoutClasses)
{
    QXmlStreamReader xml(file);
    int depth = 0;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement:
            if (++depth > deepestElement)
                return false;
            // Qt reads the names of elements, unlike their attributes, without regard to case.
            if (xml.name().compare(u"layout", Qt::CaseInsensitive) == 0
                && !layoutClasses.contains(xml.attributes().value(QLatin1String("class"))))
                return false;
            break;
        case QXmlStreamReader::EndElement:
            --depth;
            break;
        default:
            break;
        }
    }
    return true;
}
