// The tree of elements, showing, closing and the end of an element.
//
// Who deletes the host, and when:
// - at once: close(), destroy(), and Escape in a ZEFUIWidget;
// - after 1 ms: a ZEFUIDialog that answered; close() when Qt is closing or has closed the host already, or
//   may be in the middle of a signal of the form's widgets;
// - at the tick, and 1 ms: whatever else is closing, which is how a closed ZEFUIWidget goes;
// - postponed by 1 ms at a time while a DeletionGuard lives, whichever of the above asked for it.

#include "ZEFUIElementPrivate.h"

#include "debugOutput.h"

#include <ZEFBase.h>
#include <ZEFPipeFacilityInvocationContext.h>
#include <ZEFTranslatorCache.h>
#include <ZEFUIDialog.h>
#include <ZEFUIWidget.h>

#include <platform/ForegroundWindow.h>

#include <QtCore/QScopeGuard>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

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

//! A guard that Qt deletes with the children of a widget, after it has closed its window.
class GuardingChild : public QObject { // clazy:exclude=missing-qobject-macro
public:
    GuardingChild(QWidget* parent, ZEFUIElement* element)
        : QObject(parent)
        , m_guard(element)
    {
    }

private:
    const ZEFUIElementPrivate::DeletionGuard m_guard;
};

} // namespace

ZEFUIElementPrivate::DeletionGuard::DeletionGuard(ZEFUIElement* element)
    : m_element(element)
{
    if (!m_element)
        return;
    ++get(m_element)->deletionGuards;
    m_wasSignalling = get(m_element)->signalWatch.isSignalling();
}

ZEFUIElementPrivate::DeletionGuard::~DeletionGuard()
{
    if (!m_element)
        return;
    --get(m_element)->deletionGuards;
    // What was emitted meanwhile has come to its end.
    if (!m_wasSignalling)
        get(m_element)->signalWatch.forget();
}

void ZEFUIElementPrivate::deleteHost(ZEFUIElement* element, bool later)
{
    if (beingDeleted)
        return;
    if (later || isGuarded()) {
        QTimer::singleShot(1ms, element, &ZEFUIElement::destroy);
        return;
    }
    delete widget;
}

void ZEFUIElementPrivate::spareHostsAround(QWidget* host)
{
    if (ZEFUIElement* around = ZEFUIElement::elementFromChild(host->parentWidget()))
        new GuardingChild(host, around);
}

bool ZEFUIElementPrivate::isGuarded() const
{
    return anyDeletedTogether([](const ZEFUIElementPrivate& element) { return element.deletionGuards > 0; });
}

bool ZEFUIElementPrivate::isSignalling() const
{
    return anyDeletedTogether(
        [](const ZEFUIElementPrivate& element) { return element.signalWatch.isSignalling(); });
}

template <class Predicate> bool ZEFUIElementPrivate::anyDeletedTogether(const Predicate& predicate) const
{
    QList<const ZEFUIElementPrivate*> elements = {this};
    for (qsizetype i = 0; i < elements.size(); ++i) {
        if (predicate(*elements.at(i)))
            return true;
        for (const ZEFUIElement* child : elements.at(i)->childElements) {
            // Elements may form a ring, and one that was added by hand stays in the list until it is gone.
            const ZEFUIElementPrivate* next = get(child);
            if (next && !elements.contains(next))
                elements.append(next);
        }
    }
    return false;
}

ZEFUIElement::~ZEFUIElement()
{
    d->beingDeleted = true;
    makeOrBreakConnections(false);
    QList<QPointer<ZEFUIElement>> children;
    for (ZEFUIElement* child : std::as_const(d->childElements))
        children.append(child);
    for (const QPointer<ZEFUIElement>& child : std::as_const(children)) {
        if (child && !child->d->beingDeleted)
            delete child;
    }
    if (d->parentElement)
        d->parentElement->removeChildElement(this);
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
    // A child that was added by hand does not know this element and cannot leave the list itself.
    QObject::connect(child, &QObject::destroyed, this, [this, child] {
        if (d)
            d->childElements.removeAll(child);
    });
}

void ZEFUIElement::removeChildElement(ZEFUIElement* child)
{
    if (d->childElements.removeAll(child) > 0)
        QObject::disconnect(child, &QObject::destroyed, this, nullptr);
}

ZEFUIElement* ZEFUIElement::childElement(int index) const
{
    return d->childElements.value(index);
}

int ZEFUIElement::childElementCount() const
{
    return static_cast<int>(d->childElements.size());
}

bool ZEFUIElement::isClosing() const
{
    return d->closing;
}

void ZEFUIElement::setClosing(bool closeWidget)
{
    d->closing = true;
    d->mayRaise = false;
    if (closeWidget && d->widget) {
        const QPointer<ZEFUIElement> self(this);
        d->widget->close();
        if (!self)
            return;
    } else {
        d->widget = nullptr;
    }
    Q_EMIT closing();
}

int ZEFUIElement::closeSelection() const
{
    return d->closeSelection;
}

void ZEFUIElement::setCloseSelection(int selection)
{
    d->closeSelection = selection;
}

void ZEFUIElement::close()
{
    // a receiver of closing() that closes in turn would never come to an end
    if (!d->widget || d->inClose)
        return;
    const QPointer<ZEFUIElement> self(this);
    d->inClose = true;
    const auto leave = qScopeGuard([self] {
        if (self)
            self->d->inClose = false;
    });
    const bool wasClosing = d->closing;
    const int closeEventsBefore = d->closeEvents;
    d->widget->close();
    if (!self)
        return;
    // Qt delivers no close event while it is closing or hiding the host, nor after a dialog was accepted
    // or rejected. Nobody would answer then, and Qt may still work with the host further up the stack.
    const bool unheard = d->answer && d->closeEvents == closeEventsBefore;
    const bool inTheMiddle = unheard || d->isSignalling();
    setClosing(true);
    if (self && unheard && !wasClosing)
        d->answer();
    if (self && d->widget)
        d->deleteHost(this, inTheMiddle);
}

void ZEFUIElement::destroy()
{
    if (d->widget)
        d->deleteHost(this, false);
}

void ZEFUIElement::widgetDestroyed()
{
    d->widget = nullptr;
}

void ZEFUIElement::show()
{
    bringToFront(true);
}

bool ZEFUIElement::bringToFront(bool)
{
    if (!d->widget)
        return false;
    if (!d->widget->isVisible()) {
        const QPointer<ZEFUIElement> self(this);
        {
            const ZEFUIElementPrivate::DeletionGuard guard(this);
            d->widget->show();
        }
        if (!self || !d->widget)
            return false;
    }
    return ForegroundWindow::stepInFrontOf(d->clientPID, d->widget);
}

void ZEFUIElement::housekeeping()
{
    if (!d->widget) {
        d->housekeepingTimer.stop();
        if (!d->closing)
            setClosing(false);
        return;
    }
    if (d->closing) {
        d->housekeepingTimer.stop();
        QTimer::singleShot(1ms, this, &ZEFUIElement::destroy);
        d->mayRaise = false;
        return;
    }
    if (d->geometryPending && d->mayRaise) {
        const QPointer<ZEFUIElement> self(this);
        const ZEFUIElementPrivate::DeletionGuard guard(this);
        d->widget->resize(d->savedSize);
        if (self && d->widget)
            d->widget->move(d->savedPosition);
        if (self && d->widget)
            activateAndRaise();
        if (self)
            d->geometryPending = false;
        return;
    }
    if (d->mayRaise)
        bringToFront(false);
    else
        ZEFBase::logDebug(QStringLiteral("Not Bringing to front!"));
}

void ZEFUIElement::activateAndRaise()
{
    // The line names the dialog class for every kind of host; those who read logs look for it.
    ZEFBase::logDebug(QStringLiteral("ZEFUIDialog Activate and raise window %1").arg(hexAddress(this)));
    if (!d->widget)
        return;
    const QPointer<QWidget> widget(d->widget);
    widget->activateWindow();
    if (widget)
        widget->raise();
}

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

#include "moc_ZEFUIElement.cpp"
