#pragma once

#include <QtCore/QString>

//! What Designer tells about a class and starts its widgets with.
struct WidgetDescription {
    QString displayName;
    QString toolTip;
    QString whatsThis;
    //! Without an underscore: the delegate and the service address the widget by it.
    QString objectName;
    //! Property elements of a form file.
    QString properties;
    //! How Designer edits string properties that it would otherwise take for translated rich text.
    QString propertySpecifications;
};

//! An empty description for a class that has none.
WidgetDescription widgetDescription(QLatin1String className);
