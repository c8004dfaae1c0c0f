#include "NamedSlotWatch.h"

#include "HostLife.h"

#include <ZEFUIElement.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QThread>
#include <QtWidgets/QWidget>

namespace {

//! The work of one call. A slot that disconnects its sender never ends in end(); its call is over when
//! control returns to the event loop.
class SlotCall : public QObject { // clazy:exclude=missing-qobject-macro
public:
    SlotCall(QObject* watch, QObject* widget, ZEFUIElement* element, HostLife::Work::Hold hold)
        : QObject(watch)
        , m_work(widget, element, hold)
    {
        // Without a running event loop, the first nested one would delete it.
        if (QThread::currentThread()->loopLevel() > 0)
            deleteLater();
    }

private:
    Q_DISABLE_COPY_MOVE(SlotCall)
    const HostLife::Work m_work;
};

//! Every class that emits clicked(bool) lets the receiver delete the sender.
bool isClick(const QMetaMethod& signal)
{
    return signal.methodSignature() == "clicked(bool)";
}

//! The sender, or the widget that it is part of: what is no widget cannot be guarded while it emits
//! destroyed().
QObject* widgetOf(QObject* sender)
{
    while (sender && !sender->isWidgetType())
        sender = sender->parent();
    return sender;
}

} // namespace

NamedSlotWatch::NamedSlotWatch(QObject* sender, bool isClick, ZEFUIElement* element)
    : QObject(sender)
    , m_isClick(isClick)
    , m_element(element)
{
}

bool NamedSlotWatch::connect(QObject* sender, int signal, QObject* receiver, int slot, ZEFUIElement* element)
{
    static const int beginSlot = staticMetaObject.indexOfSlot("begin()");
    static const int endSlot = staticMetaObject.indexOfSlot("end()");
    auto* watch = new NamedSlotWatch(sender, isClick(sender->metaObject()->method(signal)), element);
    // Qt calls the slots of a signal in the order in which they were connected.
    QMetaObject::connect(sender, signal, watch, beginSlot, Qt::DirectConnection);
    const bool connected = QMetaObject::connect(sender, signal, receiver, slot);
    QMetaObject::connect(sender, signal, watch, endSlot, Qt::DirectConnection);
    return connected;
}

void NamedSlotWatch::begin()
{
    m_calls.removeAll(QPointer<QObject>());
    m_calls.append(new SlotCall(this, widgetOf(sender()), m_element,
                                m_isClick ? HostLife::Work::InNestedLoops : HostLife::Work::Always));
}

void NamedSlotWatch::end()
{
    if (!m_calls.isEmpty())
        delete m_calls.takeLast();
}

#include "moc_NamedSlotWatch.cpp"
