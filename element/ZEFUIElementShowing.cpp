// Showing a form, and keeping it in front.

#include "ZEFUIElementPrivate.h"

#include "debugOutput.h"

#include <ZEFBase.h>

#include <platform/ForegroundWindow.h>

void ZEFUIElement::show()
{
    bringToFront(true);
}

bool ZEFUIElement::bringToFront(bool)
{
    return d->showHost(this) && ForegroundWindow::stepInFrontOf(d->clientPID, d->widget);
}

void ZEFUIElementPrivate::stayInFront(ZEFUIElement* element)
{
    if (showHost(element))
        ForegroundWindow::stayInFrontOf(clientPID, widget);
}

bool ZEFUIElementPrivate::showHost(ZEFUIElement* element)
{
    if (!widget || widget->isVisible())
        return widget;
    const QPointer<ZEFUIElement> self(element);
    const HostLife::Work work(widget, element);
    widget->show();
    return self && widget;
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

void ZEFUIElementPrivate::restoreGeometry(ZEFUIElement* element)
{
    const QPointer<ZEFUIElement> self(element);
    const HostLife::Work work(widget, element);
    widget->resize(savedSize);
    if (self && widget)
        widget->move(savedPosition);
    if (self && widget)
        element->activateAndRaise();
    if (self)
        geometryPending = false;
}
