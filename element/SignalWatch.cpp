#include "SignalWatch.h"

#include <ZEFFormatCell.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QThread>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QWidget>

namespace {

bool isOfTheLibrary(const QMetaMethod& signal)
{
    const QMetaObject* declaring = signal.enclosingMetaObject();
    return declaring != &ZEFFormatCell::staticMetaObject && qstrncmp(declaring->className(), "ZEF", 3) == 0;
}

bool isOfAClick(const QMetaMethod& signal)
{
    const QByteArray name = signal.name();
    return name == "clicked" || name == "pressed" || name == "released";
}

} // namespace

void SignalWatch::watch(QWidget* widget)
{
    static const int heardSlot = staticMetaObject.indexOfSlot("heard()");
    static const int clickedSlot = staticMetaObject.indexOfSlot("clicked()");
    const bool isButton = qobject_cast<QAbstractButton*>(widget);
    const QMetaObject* meta = widget->metaObject();
    for (int index = QWidget::staticMetaObject.methodOffset(); index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (method.methodType() != QMetaMethod::Signal || (method.attributes() & QMetaMethod::Cloned)
            || isOfTheLibrary(method))
            continue;
        const int slot = isButton && isOfAClick(method) ? clickedSlot : heardSlot;
        QMetaObject::connect(widget, index, this, slot, Qt::DirectConnection | Qt::UniqueConnection);
    }
}

void SignalWatch::forget()
{
    delete m_emission;
}

void SignalWatch::heard()
{
    m_emitter = sender();
    if (m_emission)
        return;
    m_emission = new QObject(this);
    // Not by an event loop that a slot of the signal runs.
    if (QThread::currentThread()->loopLevel() > 0)
        m_emission->deleteLater();
    else // Without any loop deleteLater() would do nothing.
        QMetaObject::invokeMethod(this, &SignalWatch::forget, Qt::QueuedConnection);
}

void SignalWatch::clicked()
{
    // Its toggled() came before and has ended.
    if (m_emitter == sender())
        forget();
}
