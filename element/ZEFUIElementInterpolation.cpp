// Filling a form with data: property values by name, and %{key} placeholders in its texts.

#include "ZEFUIElementPrivate.h"

#include "debugOutput.h"
#include "widgetLookup.h"

#include <ZEFBase.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFTranslatorCache.h>

#include <QtCore/QEvent>
#include <QtCore/QHash>
#include <QtCore/QMetaProperty>

#include <utility>

//! The string properties of each class that one run of interpolate() meets, in the order of the meta-object.
class StringProperties {
public:
    const QList<QMetaProperty>& of(const QMetaObject* meta);

private:
    QHash<const QMetaObject*, QList<QMetaProperty>> m_properties;
};

namespace {

/*!
 * The widgets below a host by name, found in one walk: a request may hold 100,000 keys. Slots may change
 * the form between two keys; the walk is then made again.
 */
class WidgetsByName : public QObject { // clazy:exclude=missing-qobject-macro
public:
    explicit WidgetsByName(QWidget* host)
        : m_host(host)
    {
    }

    //! In Qt's child order, as widgetsNamed() finds them.
    QList<QPointer<QWidget>> named(const QString& name)
    {
        if (!std::exchange(m_valid, true))
            walk();
        return m_widgets.value(name);
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::ChildAdded || event->type() == QEvent::ChildRemoved
            || event->type() == QEvent::ZOrderChange)
            m_valid = false;
        return QObject::eventFilter(watched, event);
    }

private:
    void walk()
    {
        m_widgets.clear();
        if (!m_host)
            return;
        m_host->installEventFilter(this);
        for (QObject* object : descendants<QObject>(m_host)) {
            object->installEventFilter(this);
            if (auto* widget = qobject_cast<QWidget*>(object)) {
                disconnect(widget, &QObject::objectNameChanged, this, nullptr);
                connect(widget, &QObject::objectNameChanged, this, [this] { m_valid = false; });
                m_widgets[widget->objectName()].append(widget);
            }
        }
    }

    QPointer<QWidget> m_host;
    QHash<QString, QList<QPointer<QWidget>>> m_widgets;
    bool m_valid = false;
};

} // namespace

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
    const ZEFUIElementPrivate::DeletionGuard guard(this);
    WidgetsByName widgetsByName(d->widget);
    for (const QString& key : properties.keys()) {
        const QByteArrayList pieces = key.toLatin1().split('_');
        if (pieces.size() < 2)
            continue;
        // Writing a property runs the form's slots, which may delete widgets or the whole form.
        const QList<QPointer<QWidget>> widgets = widgetsByName.named(QString::fromLatin1(pieces.at(0)));
        if (widgets.isEmpty())
            continue;
        const QString value = properties.getString(key);
        for (const QPointer<QWidget>& widget : widgets) {
            if (!widget)
                continue;
            const int index = widget->metaObject()->indexOfProperty(pieces.at(1).constData());
            if (index < 0)
                continue;
            QString name = widget->objectName();
            widget->metaObject()->property(index).write(widget, value);
            // the name after the write: it may be the name that was written
            if (widget)
                name = widget->objectName();
            writeDebug(QStringLiteral("set property on %1.%2=%3")
                           .arg(name, QString::fromLatin1(pieces.at(1)), value));
            if (!self || !d->widget)
                return;
        }
    }
}

void ZEFUIElement::interpolate(const ZEFDictionaryList& dictionaries)
{
    if (!d->widget)
        return;
    const QPointer<ZEFUIElement> self(this);
    const ZEFUIElementPrivate::DeletionGuard guard(this);
    const QPointer<QWidget> host(d->widget);
    StringProperties stringProperties;
    d->interpolateWidget(this, host, dictionaries, stringProperties);
    if (!self || !host)
        return;
    const QList<QWidget*> found = descendants<QWidget>(host);
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
    const ZEFUIElementPrivate::DeletionGuard guard(this);
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
