// The life of a host: open, closing, answered, deleted.
//
// Who deletes the host, and when:
// - close(), destroy(), and Escape in a ZEFUIWidget: at once;
// - a ZEFUIDialog that answered: after 1 ms;
// - whatever else is closing, as a closed ZEFUIWidget: at the next tick, and 1 ms.
// All of them go through HostLife::end(), which waits while a HostLife::Work holds the host.

#include "HostLife.h"

#include "ZEFUIElementPrivate.h"

#include <ZEFBase.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QThread>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

QList<const HostLife::Work*>& works()
{
    static QList<const HostLife::Work*> list;
    return list;
}

//! The elements whose hosts wait for the end of a work.
QList<QPointer<ZEFUIElement>>& waiting()
{
    static QList<QPointer<ZEFUIElement>> list;
    return list;
}

//! Ends a host from the event loop. Only deleteLater() knows the level of the loop.
class DeferredEnd : public QObject { // clazy:exclude=missing-qobject-macro
public:
    explicit DeferredEnd(ZEFUIElement* element)
        : QObject(element)
        , m_element(element)
    {
        deleteLater();
    }
    ~DeferredEnd() override
    {
        setParent(nullptr); // the element may go first now
        if (m_element)
            HostLife::of(m_element).end();
    }

private:
    Q_DISABLE_COPY_MOVE(DeferredEnd)
    const QPointer<ZEFUIElement> m_element;
};

bool isInside(const QObject* object, const QObject* host)
{
    while (object && object != host)
        object = object->parent();
    return object;
}

} // namespace

HostLife::Work::Work(QObject* object, ZEFUIElement* element, Hold hold)
    : m_object(object)
    , m_element(element)
    , m_loopLevel(hold == InNestedLoops ? QThread::currentThread()->loopLevel() : -1)
{
    works().append(this);
}

HostLife::Work::~Work()
{
    works().removeOne(this);
    const auto elements = std::exchange(waiting(), {});
    for (const QPointer<ZEFUIElement>& element : elements) {
        if (element)
            new DeferredEnd(element);
    }
}

HostLife::HostLife(ZEFUIElement* element)
    : m_element(element)
{
}

HostLife& HostLife::of(const ZEFUIElement* element)
{
    return ZEFUIElementPrivate::get(element)->life;
}

bool HostLife::closeAndAnswer(QWidget* host)
{
    const Work work(host, m_element);
    const QPointer<ZEFUIElement> self(m_element);
    m_element->setClosing(true);
    if (self)
        answer(host);
    return self;
}

void HostLife::answer(QWidget* host)
{
    if (std::exchange(m_answered, true))
        return;
    // By name: an element may also belong to a plain widget, which answers nobody.
    const QMetaObject* meta = host->metaObject();
    const int signal = meta->indexOfSignal("respondClosed(ZEFPipeFacilityInvocationContext*,int)");
    if (signal < 0)
        return;
    // A receiver that runs an event loop still needs the context.
    const Work work(host, m_element);
    meta->method(signal).invoke(host, Qt::DirectConnection,
                                Q_ARG(ZEFPipeFacilityInvocationContext*, m_element->context()),
                                Q_ARG(int, m_element->closeSelection()));
}

void HostLife::end()
{
    isEnding = true;
    if (isHeld())
        waiting().append(m_element);
    else
        delete m_element->widget();
}

bool HostLife::isHeld() const
{
    const int loopLevel = QThread::currentThread()->loopLevel();
    return std::any_of(works().cbegin(), works().cend(),
                       [&](const Work* work) { return work->m_loopLevel < loopLevel && takesAlong(*work); });
}

//! Whether the end of the host would delete what \a work is about. A host takes along what is inside it, and
//! each element takes along its child elements.
bool HostLife::takesAlong(const Work& work) const
{
    const QWidget* host = m_element->widget();
    if (!work.m_object)
        return false;
    if (isInside(work.m_object, host))
        return true;
    QList<const ZEFUIElement*> elements = {work.m_element};
    for (qsizetype i = 0; i < elements.size(); ++i) {
        const ZEFUIElement* element = elements.at(i);
        if (!element)
            continue;
        if (element == m_element || isInside(element->widget(), host))
            return true;
        for (const ZEFUIElement* owner : std::as_const(ZEFUIElementPrivate::get(element)->owners)) {
            if (!elements.contains(owner)) // elements may form a ring
                elements.append(owner);
        }
    }
    return false;
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
    if (!d->widget || std::exchange(d->life.isEnding, true))
        return;
    const QPointer<ZEFUIElement> self(this);
    const bool wasClosing = d->closing;
    d->widget->close();
    if (!self)
        return;
    setClosing(true);
    // The host's close event has answered, but Qt sends none to a dialog that was accepted or rejected, nor
    // while it is closing the host already.
    if (self && d->widget && !wasClosing)
        d->life.answer(d->widget);
    if (self)
        d->life.end();
}

void ZEFUIElement::destroy()
{
    if (d->widget && !d->life.isEnding)
        d->life.end();
}

void ZEFUIElement::widgetDestroyed()
{
    d->widget = nullptr;
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
        d->restoreGeometry(this);
        return;
    }
    if (d->mayRaise)
        d->stayInFront(this);
    else
        ZEFBase::logDebug(QStringLiteral("Not Bringing to front!"));
}
