// Filling a form with data: property values by name, and %{key} placeholders in its texts.

#include "ZEFUIElementPrivate.h"

#include "debugOutput.h"
#include "widgetLookup.h"

#include <ZEFBase.h>
#include <ZEFDictionary.h>
#include <ZEFDictionaryList.h>
#include <ZEFTranslatorCache.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QHash>
#include <QtCore/QMetaProperty>
#include <QtCore/QStringBuilder>

#include <memory>
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
 * The widgets below a host by name. One walk serves many keys: a request may hold 100,000. A slot may change
 * the form between two keys; what it adds or renames calls for another walk.
 */
class WidgetsByName : public QObject { // clazy:exclude=missing-qobject-macro
public:
    explicit WidgetsByName(QWidget* host)
        : m_host(host)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    //! In the order of findChildren().
    QList<QPointer<QWidget>> named(const QString& name)
    {
        if (!std::exchange(m_valid, true))
            walk();
        return m_widgets.value(name);
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        const QEvent::Type type = event->type();
        if (type == QEvent::ParentChange || type == QEvent::ZOrderChange
            || (type == QEvent::ChildAdded && static_cast<QChildEvent*>(event)->child()->isWidgetType()))
            m_valid = false;
        return false;
    }

private:
    void walk()
    {
        m_widgets.clear();
        m_renaming = std::make_unique<QObject>();
        if (!m_host)
            return;
        for (const QPointer<QWidget>& widget : widgetsBelow(m_host)) {
            connect(widget, &QObject::objectNameChanged, m_renaming.get(), [this] { m_valid = false; });
            m_widgets[widget->objectName()].append(widget);
        }
    }

    const QPointer<QWidget> m_host;
    QHash<QString, QList<QPointer<QWidget>>> m_widgets;
    std::unique_ptr<QObject> m_renaming; // the receiver of the latest walk's connections
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
    const HostLife::Work work(d->widget, this);
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
            const QString shown = shownValue(widget, value);
            widget->metaObject()->property(index).write(widget, value);
            // the name after the write: it may be the name that was written
            if (widget)
                name = widget->objectName();
            writeDebug(u"set property on " % name % u'.' % QString::fromLatin1(pieces.at(1)) % u'=' % shown);
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
    const HostLife::Work work(d->widget, this);
    const QPointer<QWidget> host(d->widget);
    StringProperties stringProperties;
    d->interpolateWidget(this, host, dictionaries, stringProperties);
    if (!self || !host)
        return;
    for (const QPointer<QWidget>& widget : widgetsBelow(host)) {
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
    const HostLife::Work work(d->widget, this);
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
