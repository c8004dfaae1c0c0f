#pragma once

#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>

#include <memory>
#include <vector>

//! The plug-in: all classes of the library that forms may name.
class WidgetCollection : public QObject, public QDesignerCustomWidgetCollectionInterface {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.qt-project.Qt.QDesignerCustomWidgetCollectionInterface")
    Q_INTERFACES(QDesignerCustomWidgetCollectionInterface)

public:
    WidgetCollection();
    ~WidgetCollection() override;

    QList<QDesignerCustomWidgetInterface*> customWidgets() const override;

private:
    Q_DISABLE_COPY_MOVE(WidgetCollection)

    std::vector<std::unique_ptr<QDesignerCustomWidgetInterface>> m_widgets;
};
