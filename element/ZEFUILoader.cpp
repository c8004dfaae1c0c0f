#include "ZEFUILoader.h"

#include <ZEFBase.h>
#include <ZEFCommandLinkButton.h>
#include <ZEFEllipsisLabel.h>
#include <ZEFFlatButton.h>
#include <ZEFFormatCell.h>
#include <ZEFFormatEdit.h>
#include <ZEFHyperlinkLabel.h>
#include <ZEFLightStdButton.h>
#include <ZEFLightStdSSButton.h>
#include <ZEFLightStdSSCheckbox.h>
#include <ZEFToggleButton.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace {

struct CustomClass {
    QLatin1String name;
    QWidget* (*create)(QWidget* parent);
};

template <class Widget> QWidget* create(QWidget* parent)
{
    return new Widget(parent);
}

// The loader knows the library's classes only from here. ZEFStdButton, ZEFStdSSButton,
// ZEFStdSSCheckbox and ZEFCalendarWidget stay out of it on purpose: forms must not create them.
const QList<CustomClass>& customClasses()
{
    static const QList<CustomClass> classes = {
        {QLatin1String("ZEFCommandLinkButton"), create<ZEFCommandLinkButton>},
        {QLatin1String("ZEFToggleButton"), create<ZEFToggleButton>},
        {QLatin1String("ZEFFormatCell"), create<ZEFFormatCell>},
        {QLatin1String("ZEFFormatEdit"), create<ZEFFormatEdit>},
        {QLatin1String("ZEFEllipsisLabel"), create<ZEFEllipsisLabel>},
        {QLatin1String("ZEFHyperlinkLabel"), create<ZEFHyperlinkLabel>},
        {QLatin1String("ZEFFlatButton"), create<ZEFFlatButton>},
        {QLatin1String("ZEFLightStdSSButton"), create<ZEFLightStdSSButton>},
        {QLatin1String("ZEFLightStdSSCheckbox"), create<ZEFLightStdSSCheckbox>},
        {QLatin1String("ZEFLightStdButton"), create<ZEFLightStdButton>},
    };
    return classes;
}

} // namespace

ZEFUILoader::ZEFUILoader(QObject* parent)
    : QUiLoader(parent)
{
    clearPluginPaths();
    ZEFBase::logDebug(QStringLiteral("LIBRARY PATHS: %1").arg(QCoreApplication::libraryPaths().join(u'\n')));
    ZEFBase::logDebug(QStringLiteral("PLUGIN PATHS: %1").arg(pluginPaths().join(u'\n')));
}

QWidget* ZEFUILoader::createWidget(const QString& className, QWidget* parent, const QString& name)
{
    const auto& classes = customClasses();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const CustomClass& entry) { return entry.name == className; });
    if (found == classes.end())
        return QUiLoader::createWidget(className, parent, name);

    ZEFBase::logDebug(QStringLiteral("ZEFUILoader creating custom %1").arg(className));
    QWidget* widget = found->create(parent);
    widget->setObjectName(name);
    return widget;
}

#include "moc_ZEFUILoader.cpp"
