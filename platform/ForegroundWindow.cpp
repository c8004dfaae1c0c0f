#include "ForegroundWindow.h"

namespace {

ForegroundWindow* replacement = nullptr;

} // namespace

ForegroundWindow& ForegroundWindow::instance()
{
    return replacement ? *replacement : platformForegroundWindow();
}

void ForegroundWindow::setInstance(ForegroundWindow* backend)
{
    replacement = backend;
}

bool ForegroundWindow::stepInFrontOf(qint64 client, QWidget* widget)
{
    const std::optional<qint64> owner = instance().ownerProcess();
    if (!owner)
        return false;
    if (*owner != UnknownProcess && static_cast<quint32>(*owner) == static_cast<quint32>(client))
        instance().putInFront(widget);
    return true;
}
