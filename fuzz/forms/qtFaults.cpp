#include "qtFaults.h"

#include <QtCore/QSet>
#include <QtCore/QXmlStreamReader>
#include <QtWidgets/QWidget>

#include <vector>

namespace {

//! Widgets that have a layout of their own when they are made, or that hold one widget and delete the one
//! before.
bool hasNoPlaceForLayout(QStringView className)
{
    static const QSet<QStringView> classes = {
        u"QScrollArea",     u"QMainWindow",
        u"QWizard",         u"QDockWidget",
        u"QToolBox",        u"QDialogButtonBox",
        u"QToolBar",        u"QStatusBar",
        u"QTabWidget",      u"QMenuBar",
        u"QCalendarWidget", u"ZEFFormatEdit",
        u"ZEFToggleButton", u"ZEFCommandLinkButton",
        u"QStackedWidget",  u"ZEFCalendarWidget",
    };
    return classes.contains(className);
}

//! Qt reckons with the corners of a rectangle without asking whether they fit into an int.
bool isTooFarAway(QStringView coordinate)
{
    bool isNumber = false;
    const qlonglong value = coordinate.trimmed().toLongLong(&isNumber);
    return isNumber && (value > QWIDGETSIZE_MAX || value < -QWIDGETSIZE_MAX);
}

struct Element {
    QString tag;
    QString className;
    int layouts = 0;
    QSet<QString> cells = {};
};

} // namespace

bool meetsQtFault(QByteArrayView form)
{
    QXmlStreamReader xml(form.toByteArray());
    std::vector<Element> open;
    while (!xml.atEnd()) {
        switch (xml.readNext()) {
        case QXmlStreamReader::StartElement: {
            const Element element = {xml.name().toString().toLower(),
                                     xml.attributes().value(QLatin1String("class")).toString()};
            // Qt drops the layout and never deletes it, or the layout goes on with widgets that are gone.
            if (element.tag == u"layout" && !open.empty() && open.back().tag == u"widget"
                && (hasNoPlaceForLayout(open.back().className) || ++open.back().layouts > 1))
                return true;
            // An item for a cell of a form layout that is taken already: never deleted either.
            if (element.tag == u"item" && !open.empty() && open.back().className == u"QFormLayout") {
                const QString cell = xml.attributes().value(QLatin1String("row")) + u' '
                    + xml.attributes().value(QLatin1String("column"));
                if (open.back().cells.contains(cell)
                    || xml.attributes().hasAttribute(QLatin1String("colspan")))
                    return true;
                open.back().cells.insert(cell);
            }
            open.push_back(element);
            break;
        }
        case QXmlStreamReader::EndElement:
            open.pop_back();
            break;
        case QXmlStreamReader::Characters:
            if (open.size() > 1 && open[open.size() - 2].tag == u"rect" && isTooFarAway(xml.text()))
                return true;
            break;
        default:
            break;
        }
    }
    return false;
}
