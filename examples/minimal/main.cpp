#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QApplication>

class Delegate : public QObject {
    Q_OBJECT

public:
    Q_INVOKABLE void okButton_clicked(ZEFPipeFacilityInvocationContext*, QVariant nameEdit_text)
    {
        qInfo("Hello, %s", qUtf8Printable(nameEdit_text.toString()));
        element->setCloseSelection(1);
        element->close();
    }

    ZEFUIElement* element = nullptr;
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    ZEFUIDialog* dialog =
        ZEFUIDialog::create(QStringLiteral("greeting"), QStringLiteral("en"), nullptr, Qt::Dialog);
    if (!dialog)
        return 1;
    ZEFDictionary texts{{QStringLiteral("service"), QStringLiteral("the minimal service")}};
    ZEFDictionaryList dictionaries;
    dictionaries.append(&texts);
    Delegate delegate;
    delegate.element = dialog->element();
    delegate.element->interpolate(dictionaries);
    delegate.element->setDelegate(&delegate);
    QObject::connect(dialog, &ZEFUIDialog::respondClosed,
                     [](ZEFPipeFacilityInvocationContext*, int selection) { QApplication::exit(selection); });
    delegate.element->show();
    return QApplication::exec();
}

#include "main.moc"
