// Filling a form with data: property values by name, and %{key} placeholders in its texts.

#include "ZEFUIElementPrivate.h"

#include "debugOutput.h"
#include "widgetLookup.h"

#include <ZEFBase.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFTranslatorCache.h>

#include <QtCore/QMetaProperty>

void ZEFUIElement::updateProperties(const ZEFDictionary& properties)
{
    const QPointer<ZEFUIElement> self(this);
    for (const QString& key : properties.keys()) {
        const QByteArrayList pieces = key.toLatin1().split('_');
        if (pieces.size() < 2)
            continue;
        const QString value = properties.getString(key);
        const QList<QWidget*> found = widgetsNamed(d->widget, QString::fromLatin1(pieces.at(0)));
        // Writing a property runs the form's slots, which may delete widgets or the whole form.
        const QList<QPointer<QWidget>> widgets(found.cbegin(), found.cend());
        for (const QPointer<QWidget>& widget : widgets) {
            if (!widget)
                continue;
            const int index = widget->metaObject()->indexOfProperty(pieces.at(1).constData());
            if (index < 0)
                continue;
            const QString name = widget->objectName();
            widget->metaObject()->property(index).write(widget, value);
            writeDebug(QStringLiteral("set property on %1.%2=%3")
                           .arg(name, QString::fromLatin1(pieces.at(1)), value));
            if (!self)
                return;
        }
    }
}

void ZEFUIElement::interpolate(const ZEFDictionaryList& dictionaries)
{
    if (!d->widget)
        return;
    const QPointer<ZEFUIElement> self(this);
    const QPointer<QWidget> host(d->widget);
    interpolateWidget(host, dictionaries);
    if (!self || !host)
        return;
    const QList<QWidget*> found = host->findChildren<QWidget*>();
    const QList<QPointer<QWidget>> widgets(found.cbegin(), found.cend());
    for (const QPointer<QWidget>& widget : widgets) {
        interpolateWidget(widget, dictionaries);
        if (!self)
            return;
    }
}

void ZEFUIElement::interpolateWidget(QWidget* widget, const ZEFDictionaryList& dictionaries)
{
    if (!widget)
        return;
    QTranslator* translator =
        ZEFTranslatorCache::translatorForLocale(QStringLiteral("zefmain.qm"), d->locale);
    const QPointer<ZEFUIElement> self(this);
    const QPointer<QWidget> guard(widget);
    const QMetaObject* meta = widget->metaObject();
    for (int index = 0; index < meta->propertyCount(); ++index) {
        const QMetaProperty property = meta->property(index);
        if (property.metaType() != QMetaType::fromType<QString>())
            continue;
        QString text = property.read(widget).toString();
        // A text that an earlier run wrote is traced back to its template.
        if (const auto source = d->interpolationSources.constFind(text);
            source != d->interpolationSources.cend())
            text = *source;
        bool translated = false;
        const QString translation = ZEFTranslatorCache::localizeString(text, translator, &translated);
        if (translated)
            text = translation;
        const QString result = dictionaries.interpolateString(text, translator);
        if (result == text)
            continue;
        ZEFBase::logDebug(QStringLiteral("new value for property %1 on %2 :%3")
                              .arg(QString::fromUtf8(property.name()), widget->objectName(), result));
        property.write(widget, result);
        if (!self)
            return;
        d->interpolationSources.insert(result, text);
        if (!guard)
            return;
    }
}
