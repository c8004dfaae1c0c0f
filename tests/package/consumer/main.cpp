#include <ZEFBase.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <ZEFUIVersion.h>
#include <ZEFUIWidget.h>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>

#include <cstdio>

namespace {

class Request : public ZEFPipeFacilityInvocationContext { };

class Delegate : public QObject {
    Q_OBJECT

public:
    QPointer<ZEFUIElement> element;
    QString name;

    Q_INVOKABLE void ok_clicked(ZEFPipeFacilityInvocationContext*, const QVariant& name_text)
    {
        name = name_text.toString();
        element->setCloseSelection(7);
        element->close();
    }
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    int failures = 0;
    const auto check = [&failures](bool holds, const char* what) {
        std::printf("%s: %s\n", holds ? "ok" : "FAILED", what);
        failures += holds ? 0 : 1;
    };

    QStringList log;
    ZEFBase::setLogHandler([&log](const QString& line) { log.append(line); });

    check(!ZEFUIWidget::create(QStringLiteral("missing"), QStringLiteral("de"), nullptr, Qt::Window),
          "a form that is not there gives no host");

    QPointer<ZEFUIDialog> dialog =
        ZEFUIDialog::create(QStringLiteral("greeting"), QStringLiteral("de"), nullptr, Qt::Dialog);
    check(dialog, "the form of this program's own resources is loaded");
    if (!dialog)
        return 1;
    auto* request = new Request;
    Delegate delegate;
    delegate.element = dialog->element();
    dialog->element()->setDelegate(&delegate);
    dialog->element()->setContext(request);
    ZEFDictionary dictionary{{QStringLiteral("name"), QStringLiteral("Ada")}};
    ZEFDictionaryList dictionaries;
    dictionaries.append(&dictionary);
    dialog->element()->interpolate(dictionaries);

    auto* label = dialog->findChild<QLabel*>(QStringLiteral("name"));
    check(label && label->text() == QStringLiteral("Hello Ada"), "its placeholder is filled");
    check(label && label->styleSheet().contains(QStringLiteral("#123456")), "its style sheet is set");
    check(log.contains(QStringLiteral("Found CSS: :/css/name.css")), "the library logs to this program");

    int selection = -1;
    bool sameRequest = false;
    QObject::connect(dialog, &ZEFUIDialog::respondClosed, &application,
                     [&](ZEFPipeFacilityInvocationContext* context, int answer) {
                         selection = answer;
                         sameRequest = context == request;
                     });
    dialog->element()->show();
    check(dialog->isVisible(), "the form is shown");
    dialog->findChild<QPushButton*>(QStringLiteral("ok"))->click();
    check(delegate.name == QStringLiteral("Hello Ada"), "the click reaches the delegate with its value");
    check(selection == 7 && sameRequest, "the answer comes with the request");

    check(!dialog, "the host deletes itself");
    std::printf("consumer of ZEFUI %s: %d failures\n", ZEFUI_VERSION_STRING, failures);
    return failures == 0 ? 0 : 1;
}

#include "main.moc"
