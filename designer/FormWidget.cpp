#include "FormWidget.h"

#include <ZEFEllipsisLabel.h>

using namespace Qt::StringLiterals;

namespace {

// Without Q_OBJECT on purpose: Designer shall see it as the class that the form names.
class UncutEllipsisLabel : public ZEFEllipsisLabel { // clazy:exclude=missing-qobject-macro
public:
    using ZEFEllipsisLabel::ZEFEllipsisLabel;

protected:
    // A cut text would be saved into the form, and its tool tip with it.
    // NOLINTNEXTLINE(bugprone-parent-virtual-call)
    void paintEvent(QPaintEvent* e) override { QLabel::paintEvent(e); } // clazy:exclude=skipped-base-method
};

//! Designer knows no bases that are this library's own.
QString qtBase(const QMetaObject* metaObject)
{
    while (QByteArrayView(metaObject->className()).startsWith("ZEF"))
        metaObject = metaObject->superClass();
    return QLatin1String(metaObject->className());
}

} // namespace

FormWidget::FormWidget(const CustomClass& customClass, const WidgetDescription& description)
    : m_class(customClass)
    , m_description(description)
{
}

QString FormWidget::name() const
{
    return m_class.name;
}

QString FormWidget::group() const
{
    return u"ZEFUI"_s;
}

QString FormWidget::toolTip() const
{
    return m_description.toolTip;
}

QString FormWidget::whatsThis() const
{
    return m_description.whatsThis;
}

QString FormWidget::includeFile() const
{
    return m_class.name + u".h"_s;
}

QIcon FormWidget::icon() const
{
    return QIcon(u":/zefui/designer/%1.png"_s.arg(QString(m_class.name).toLower()));
}

QString FormWidget::domXml() const
{
    return u"<ui language=\"c++\" displayname=\"%1\">"
           "<widget class=\"%2\" name=\"%3\">%4</widget>"
           "<customwidgets><customwidget><class>%2</class><extends>%5</extends>"
           "<propertyspecifications>%6</propertyspecifications></customwidget></customwidgets></ui>"_s.arg(
               m_description.displayName, m_class.name, m_description.objectName, m_description.properties,
               qtBase(m_class.metaObject), m_description.propertySpecifications);
}

bool FormWidget::isContainer() const
{
    return false;
}

bool FormWidget::isInitialized() const
{
    return m_initialized;
}

void FormWidget::initialize(QDesignerFormEditorInterface*)
{
    m_initialized = true;
}

QWidget* FormWidget::createWidget(QWidget* parent)
{
    if (m_class.metaObject == &ZEFEllipsisLabel::staticMetaObject)
        return new UncutEllipsisLabel(parent);
    return m_class.create(parent);
}
