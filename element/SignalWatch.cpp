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

//! Whether a click on \a button unchecks \a other first.
bool isExclusiveWith(const QAbstractButton* button, const QObject* other)
{
    const auto* rival = qobject_cast<const QAbstractButton*>(other);
    if (!rival)
        return false;
    if (button->group() || rival->group())
        return button->group() == rival->group();
    return button->autoExclusive() && rival->autoExclusive()
        && button->parentWidget() == rival->parentWidget();
}

} // namespace

void SignalWatch::watch(QWidget* widget)
{
    static const int heardSlot = staticMetaObject.indexOfSlot("heard()");
    static const int pushedSlot = staticMetaObject.indexOfSlot("pushed()");
    static const int clickedSlot = staticMetaObject.indexOfSlot("clicked()");
    const bool isButton = qobject_cast<QAbstractButton*>(widget);
    const QMetaObject* meta = widget->metaObject();
    for (int index = QWidget::staticMetaObject.methodOffset(); index < meta->methodCount(); ++index) {
        const QMetaMethod method = meta->method(index);
        if (method.methodType() != QMetaMethod::Signal || (method.attributes() & QMetaMethod::Cloned)
            || isOfTheLibrary(method))
            continue;
        const QByteArray name = method.name();
        int slot = heardSlot;
        if (isButton && name == "clicked")
            slot = clickedSlot;
        else if (isButton && (name == "pressed" || name == "released"))
            slot = pushedSlot;
        QMetaObject::connect(widget, index, this, slot, Qt::DirectConnection | Qt::UniqueConnection);
    }
}

void SignalWatch::forget()
{
    delete m_emission;
}

void SignalWatch::heard()
{
    m_latest = sender();
    if (m_emission)
        return;
    m_first = m_latest;
    m_emission = new QObject(this);
    // Not by an event loop that a slot of the signal runs.
    if (QThread::currentThread()->loopLevel() > 0)
        m_emission->deleteLater();
    else // Without any loop deleteLater() would do nothing.
        QMetaObject::invokeMethod(this, &SignalWatch::forget, Qt::QueuedConnection);
}

void SignalWatch::pushed()
{
    if (!m_emission)
        heard();
}

void SignalWatch::clicked()
{
    // What belongs to the click came before and has ended; a signal whose slot clicks the button has not.
    const auto* button = static_cast<const QAbstractButton*>(sender());
    if (m_latest == button && (m_first == button || isExclusiveWith(button, m_first)))
        forget();
}
