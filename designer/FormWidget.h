#pragma once

#include "element/customClasses.h"
#include "widgetDescriptions.h"

#include <QtUiPlugin/QDesignerCustomWidgetInterface>

//! One class of the loader's table, as Designer sees it.
class FormWidget : public QDesignerCustomWidgetInterface {
public:
    FormWidget(const CustomClass& customClass, const WidgetDescription& description);

    QString name() const override;
    QString group() const override;
    QString toolTip() const override;
    QString whatsThis() const override;
    QString includeFile() const override;
    QIcon icon() const override;
    //! What Designer puts into a form when the widget is dropped there.
    QString domXml() const override;
    bool isContainer() const override;
    bool isInitialized() const override;
    void initialize(QDesignerFormEditorInterface* core) override;
    QWidget* createWidget(QWidget* parent) override;

private:
    CustomClass m_class;
    WidgetDescription m_description;
    bool m_initialized = false;
};
