#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QApplication>

class Delegate : public QObject {
    Q_OBJECT
public:
    ZEFUIElement* element = nullptr;

    Q_INVOKABLE void okButton_clicked(ZEFPipeFacilityInvocationContext*, QVariant nameEdit_text)
    {
        qInfo().noquote() << "Hello," << nameEdit_text.toString();
        element->setCloseSelection(1);
        element->close();
    }
};

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    application.setQuitOnLastWindowClosed(false); // a service outlives its forms
    auto* dialog = ZEFUIDialog::create(QStringLiteral("greeting"), QString(), nullptr, Qt::Dialog);
    if (!dialog)
        return 1;
    Delegate delegate;
    delegate.element = dialog->element();
    delegate.element->setDelegate(&delegate);
    QObject::connect(dialog, &ZEFUIDialog::respondClosed, &application,
                     [](auto*, int selection) { QApplication::exit(selection); });
    delegate.element->show();
    return QApplication::exec();
}
#include "main.moc"
