// The tree of elements, and the end of an element.

#include "ZEFUIElementPrivate.h"

#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFTranslatorCache.h>

#include <utility>

ZEFUIElement::~ZEFUIElement()
{
    d->beingDeleted = true;
    d->life.isEnding = true; // the host is being deleted, or outlives its element
    makeOrBreakConnections(false);
    const QList<QPointer<ZEFUIElement>> children(d->childElements.cbegin(), d->childElements.cend());
    for (const QPointer<ZEFUIElement>& child : children) {
        if (child && !child->d->beingDeleted)
            delete child;
    }
    for (ZEFUIElement* owner : std::as_const(d->owners))
        owner->d->childElements.removeAll(this);
    for (ZEFUIElement* child : std::as_const(d->childElements))
        child->d->owners.removeAll(this);
    // the service's own destructor runs here, and it may still look at this element
    delete std::exchange(d->context, nullptr);
    d.reset();
    ZEFTranslatorCache::release();
}

void ZEFUIElement::addChildElement(ZEFUIElement* child)
{
    if (!child || child == this || d->childElements.contains(child))
        return;
    d->childElements.append(child);
    child->d->owners.append(this);
}

void ZEFUIElement::removeChildElement(ZEFUIElement* child)
{
    if (d->childElements.removeAll(child) > 0)
        child->d->owners.removeAll(this);
}

ZEFUIElement* ZEFUIElement::childElement(int index) const
{
    return d->childElements.value(index);
}

int ZEFUIElement::childElementCount() const
{
    return static_cast<int>(d->childElements.size());
}

#include "moc_ZEFUIElement.cpp"
