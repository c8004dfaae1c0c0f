// Operations on named child widgets, and properties by name.

#include "ZEFUIElementPrivate.h"

#include "widgetLookup.h"

#include <ZEFDictionaryList.h>

#include <QtCore/QMetaProperty>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

void ZEFUIElement::hideChild(const QString& name)
{
    showChild(name, false);
}

void ZEFUIElement::showChild(const QString& name)
{
    showChild(name, true);
}

void ZEFUIElement::showChild(const QString& name, bool visible)
{
    const HostLife::Work work(d->widget, this);
    if (QWidget* child = firstWidgetNamed(d->widget, name))
        child->setVisible(visible);
}

void ZEFUIElement::showChild(const QString& name, const QString& key, ZEFDictionaryList* dictionaries)
{
    if (!dictionaries)
        return;
    const QPointer<QWidget> child(firstWidgetNamed(d->widget, name));
    if (!child)
        return;
    const long display = dictionaries->search(key, nullptr).asLong();
    if (display < 0 || display > 2)
        return;
    const HostLife::Work work(d->widget, this);
    child->setEnabled(display == 0);
    if (child)
        child->setVisible(display != 2);
}

void ZEFUIElement::enableChild(const QString& name, bool enabled)
{
    const HostLife::Work work(d->widget, this);
    if (QWidget* child = firstWidgetNamed(d->widget, name))
        child->setEnabled(enabled);
}

// enableChildIf() and showChildIf() are opposite in their default on purpose: a missing or unexpected
// value leaves a widget usable, but never shows one that was to be hidden.
void ZEFUIElement::enableChildIf(const QString& name, const QString& key, ZEFDictionaryList* dictionaries)
{
    if (dictionaries)
        enableChild(name, dictionaries->search(key, nullptr).asString() != u"False");
}

void ZEFUIElement::showChildIf(const QString& name, const QString& key, ZEFDictionaryList* dictionaries)
{
    if (dictionaries)
        showChild(name, dictionaries->search(key, nullptr).asString() == u"True");
}

void ZEFUIElement::setChildFocus(const QString& name)
{
    const HostLife::Work work(d->widget, this);
    if (QWidget* child = firstWidgetNamed(d->widget, name))
        child->setFocus();
}

bool ZEFUIElement::setChildProperty(const QString& name, const QString& property, const QVariant& value)
{
    const HostLife::Work work(d->widget, this);
    return setWidgetProperty(firstWidgetNamed(d->widget, name), property, value);
}

QVariant ZEFUIElement::childProperty(const QString& name, const QString& property) const
{
    return widgetProperty(firstWidgetNamed(d->widget, name), property);
}

bool ZEFUIElement::setChildBackground(const QString& name, const QPixmap& pixmap, bool scaled)
{
    if (name.isEmpty())
        return false;
    const QPointer<QWidget> child(firstWidgetNamed(d->widget, name));
    if (!child)
        return false;
    const HostLife::Work work(d->widget, this);
    child->setAutoFillBackground(true);
    const QPixmap texture = scaled && !pixmap.isNull()
        ? pixmap.scaled(child->size(), Qt::IgnoreAspectRatio, Qt::FastTransformation)
        : pixmap;
    QPalette palette = child->palette();
    palette.setBrush(child->backgroundRole(), QBrush(texture));
    child->setPalette(palette);
    return true;
}

bool ZEFUIElement::setChildProperties(const QString& property, const QPixmap& pixmap, const QString&)
{
    if (!d->widget)
        return false;
    const HostLife::Work work(d->widget, this);
    const QByteArray name = property.toLocal8Bit();
    for (const QPointer<QWidget>& widget : widgetsBelow(d->widget)) {
        if (!widget)
            continue;
        const QMetaProperty metaProperty =
            widget->metaObject()->property(widget->metaObject()->indexOfProperty(name.constData()));
        if (metaProperty.metaType() == QMetaType::fromType<QPixmap>()) {
            metaProperty.write(widget, pixmap);
        } else if (metaProperty.metaType() == QMetaType::fromType<QIcon>()) {
            // Every pixmap up to here, but only the first icon, and only an icon counts as success.
            metaProperty.write(widget, QIcon(pixmap));
            return true;
        }
    }
    return false;
}

bool ZEFUIElement::setWidgetProperty(QWidget* widget, const QString& property, const QVariant& value)
{
    if (!widget)
        return false;
    const int index = widget->metaObject()->indexOfProperty(property.toLocal8Bit().constData());
    if (index < 0)
        return false;
    widget->metaObject()->property(index).write(widget, value);
    return true;
}

QVariant ZEFUIElement::widgetProperty(QWidget* widget, const QString& property)
{
    if (!widget)
        return QVariant();
    const int index = widget->metaObject()->indexOfProperty(property.toLocal8Bit().constData());
    return index < 0 ? QVariant() : widget->metaObject()->property(index).read(widget);
}
