// Filling a form with data: property values by name, and %{key} placeholders in its texts.

#include "ZEFUIElementPrivate.h"

#include "debugOutput.h"
#include "widgetLookup.h"

#include <ZEFBase.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFTranslatorCache.h>

#include <QtCore/QMetaProperty>

const QList<QMetaProperty>& StringProperties::of(const QMetaObject* meta)
{
    if (const auto known = m_properties.constFind(meta); known != m_properties.cend())
        return *known;
    QList<QMetaProperty> properties;
    for (int index = 0; index < meta->propertyCount(); ++index) {
        if (meta->property(index).metaType() == QMetaType::fromType<QString>())
            properties.append(meta->property(index));
    }
    return *m_properties.insert(meta, properties);
}

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
    StringProperties stringProperties;
    d->interpolateWidget(this, host, dictionaries, stringProperties);
    if (!self || !host)
        return;
    const QList<QWidget*> found = host->findChildren<QWidget*>();
    const QList<QPointer<QWidget>> widgets(found.cbegin(), found.cend());
    for (const QPointer<QWidget>& widget : widgets) {
        if (!widget)
            continue;
        d->interpolateWidget(this, widget, dictionaries, stringProperties);
        if (!self)
            return;
    }
}

void ZEFUIElement::interpolateWidget(QWidget* widget, const ZEFDictionaryList& dictionaries)
{
    if (!widget)
        return;
    StringProperties stringProperties;
    d->interpolateWidget(this, widget, dictionaries, stringProperties);
}

QString ZEFUIElementPrivate::templateOf(const QString& text) const
{
    // Most texts of a form are empty, and the empty key would come first.
    if (interpolationSources.isEmpty() || (text.isEmpty() && !interpolationSources.firstKey().isEmpty()))
        return text;
    return interpolationSources.value(text, text);
}

void ZEFUIElementPrivate::interpolateWidget(ZEFUIElement* element, QWidget* target,
                                            const ZEFDictionaryList& dictionaries,
                                            StringProperties& stringProperties)
{
    QTranslator* translator = ZEFTranslatorCache::translatorForLocale(QStringLiteral("zefmain.qm"), locale);
    const QPointer<ZEFUIElement> self(element);
    const QPointer<QWidget> guard(target);
    for (const QMetaProperty& property : stringProperties.of(target->metaObject())) {
        QString text = templateOf(property.read(target).toString());
        bool translated = false;
        const QString translation = ZEFTranslatorCache::localizeString(text, translator, &translated);
        if (translated)
            text = translation;
        const QString result = dictionaries.interpolateString(text, translator);
        if (result == text)
            continue;
        ZEFBase::logDebug(QStringLiteral("new value for property %1 on %2 :%3")
                              .arg(QString::fromUtf8(property.name()), target->objectName(), result));
        property.write(target, result);
        if (!self)
            return;
        interpolationSources.insert(result, text);
        if (!guard)
            return;
    }
}
