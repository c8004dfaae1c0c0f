// Loads the forms of this service by name and says on standard output what the library made of them.

#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>

#include <QtWidgets/QApplication>

#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    const struct {
        const char* form;
        const char* locale;
    } cases[] = {{"login", "de"}, {"login", "en"}, {"farewell", "de"}, {"about", "fr"}};
    for (const auto& [form, locale] : cases) {
        const std::unique_ptr<ZEFUIDialog> dialog(
            ZEFUIDialog::create(QString::fromLatin1(form), QString::fromLatin1(locale), nullptr, Qt::Dialog));
        if (!dialog) {
            std::puts("no form");
            return 1;
        }
        const ZEFUIElement* element = dialog->element();
        const QString line = element->formPath() + QStringLiteral(" | ")
            + element->childProperty(QStringLiteral("greeting"), QStringLiteral("text")).toString()
            + QStringLiteral(" | ")
            + element->childProperty(QStringLiteral("greeting"), QStringLiteral("styleSheet"))
                  .toString()
                  .trimmed();
        std::puts(line.toUtf8().constData());
    }
    return 0;
}
