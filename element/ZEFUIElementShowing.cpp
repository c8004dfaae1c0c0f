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
    if (!d->widget)
        return false;
    if (!d->widget->isVisible()) {
        const QPointer<ZEFUIElement> self(this);
        const HostLife::Work work(d->widget, this);
        d->widget->show();
        if (!self || !d->widget)
            return false;
    }
    return ForegroundWindow::stepInFrontOf(d->clientPID, d->widget);
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
