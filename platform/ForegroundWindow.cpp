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
