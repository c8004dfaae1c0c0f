#pragma once

#include <QtUiTools/QUiLoader>

/*!
 * A form loader that creates the library's own widgets by class name and never loads designer
 * plug-ins. One is made for each load.
 */
class ZEFUILoader : public QUiLoader {
    Q_OBJECT

public:
    explicit ZEFUILoader(QObject* parent);

    //! Called for each widget of a form; classes that are not the library's own go to the base class.
    QWidget* createWidget(const QString& className, QWidget* parent, const QString& name) override;
};
