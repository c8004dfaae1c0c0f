#include "NamedSlotWatch.h"

#include "HostLife.h"

#include <ZEFUIElement.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QThread>

namespace {

//! The work of one call. A slot that disconnects its sender never ends in end(); its call is over when
//! control returns to the event loop.
class SlotCall : public QObject { // clazy:exclude=missing-qobject-macro
public:
    SlotCall(QObject* watch, QObject* sender, ZEFUIElement* element)
        : QObject(watch)
        , m_work(sender, element)
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
    return signal.methodSignature() == "clicked(bool)" || signal.methodSignature() == "clicked()";
}

} // namespace

NamedSlotWatch::NamedSlotWatch(ZEFUIElement* element)
    : m_element(element)
{
}

bool NamedSlotWatch::connect(QObject* sender, int signal, QObject* receiver, int slot)
{
    if (isClick(sender->metaObject()->method(signal)))
        return QMetaObject::connect(sender, signal, receiver, slot);
    // Qt calls the slots of a signal in the order in which they were connected.
    static const int beginSlot = staticMetaObject.indexOfSlot("begin()");
    static const int endSlot = staticMetaObject.indexOfSlot("end()");
    QMetaObject::connect(sender, signal, this, beginSlot, Qt::DirectConnection);
    const bool connected = QMetaObject::connect(sender, signal, receiver, slot);
    QMetaObject::connect(sender, signal, this, endSlot, Qt::DirectConnection);
    return connected;
}

void NamedSlotWatch::begin()
{
    m_calls.removeAll(QPointer<QObject>());
    m_calls.append(new SlotCall(this, sender(), m_element));
}

void NamedSlotWatch::end()
{
    if (!m_calls.isEmpty())
        delete m_calls.takeLast();
}

#include "moc_NamedSlotWatch.cpp"
