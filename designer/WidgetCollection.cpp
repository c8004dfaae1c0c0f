#include "WidgetCollection.h"

#include "FormWidget.h"
#include "element/customClasses.h"
#include "widgetDescriptions.h"

WidgetCollection::WidgetCollection()
{
    for (const CustomClass& customClass : customClasses())
        m_widgets.push_back(std::make_unique<FormWidget>(customClass, widgetDescription(customClass.name)));
}

WidgetCollection::~WidgetCollection() = default;

QList<QDesignerCustomWidgetInterface*> WidgetCollection::customWidgets() const
{
    QList<QDesignerCustomWidgetInterface*> widgets;
    for (const auto& widget : m_widgets)
        widgets.append(widget.get());
    return widgets;
}
