#include "ForegroundWindow.h"

#include <QtCore/QElapsedTimer>

namespace {

ForegroundWindow* replacement = nullptr;
QElapsedTimer ownerAge; // of the answer about the foreground window

} // namespace

ForegroundWindow& ForegroundWindow::instance()
{
    return replacement ? *replacement : platformForegroundWindow();
}

void ForegroundWindow::setInstance(ForegroundWindow* backend)
{
    replacement = backend;
    ownerAge.invalidate();
}

bool ForegroundWindow::stepInFrontOf(qint64 client, QWidget* widget)
{
    return stepInFrontOf(client, widget, 0);
}

bool ForegroundWindow::stayInFrontOf(qint64 client, QWidget* widget)
{
    return stepInFrontOf(client, widget, 50);
}

bool ForegroundWindow::stepInFrontOf(qint64 client, QWidget* widget, qint64 maxAge)
{
    static std::optional<qint64> owner;
    if (maxAge == 0 || !ownerAge.isValid() || ownerAge.hasExpired(maxAge)) {
        owner = instance().ownerProcess();
        ownerAge.start();
    }
    if (!owner)
        return false;
    if (*owner != UnknownProcess && static_cast<quint32>(*owner) == static_cast<quint32>(client)) {
        instance().putInFront(widget);
        ownerAge.invalidate();
    }
    return true;
}
