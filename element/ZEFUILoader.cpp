#include "ZEFUILoader.h"

#include "customClasses.h"

#include <ZEFBase.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QWidget>

#include <algorithm>

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
