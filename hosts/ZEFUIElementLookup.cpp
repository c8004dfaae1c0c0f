// ZEFUIElement's static lookups, from any object of a form to its element and its host. They know the host
// classes, as the element itself must not.

#include <ZEFUIDialog.h>
#include <ZEFUIElement.h>
#include <ZEFUIWidget.h>

namespace {

QObject* topMostAncestor(QObject* object)
{
    while (object && object->parent())
        object = object->parent();
    return object;
}

//! Hosts are recognised by their exact class: a derived class is none.
bool isExactly(const QObject* object, const char* className)
{
    return object && object->metaObject() && qstrcmp(object->metaObject()->className(), className) == 0;
}

} // namespace

ZEFUIElement* ZEFUIElement::elementFromQObject(QObject* object)
{
    if (isExactly(object, "ZEFUIWidget"))
        return static_cast<ZEFUIWidget*>(object)->element();
    if (isExactly(object, "ZEFUIDialog"))
        return static_cast<ZEFUIDialog*>(object)->element();
    return nullptr;
}

ZEFUIElement* ZEFUIElement::elementFromChild(QObject* object)
{
    for (; object; object = object->parent()) {
        if (ZEFUIElement* element = elementFromQObject(object))
            return element;
    }
    return nullptr;
}

ZEFUIDialog* ZEFUIElement::dialogFromChild(QObject* object)
{
    QObject* top = topMostAncestor(object);
    return isExactly(top, "ZEFUIDialog") ? static_cast<ZEFUIDialog*>(top) : nullptr;
}

ZEFUIWidget* ZEFUIElement::widgetFromChild(QObject* object)
{
    QObject* top = topMostAncestor(object);
    return isExactly(top, "ZEFUIWidget") ? static_cast<ZEFUIWidget*>(top) : nullptr;
}
