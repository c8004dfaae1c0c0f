#include "ForegroundWindow_windows.h"

#include "ForegroundWindow.h"

#include <QtWidgets/QWidget>

#include <qt_windows.h>

namespace {

class UserForegroundWindow : public ForegroundWindow {
public:
    std::optional<qint64> ownerProcess() override
    {
        const HWND window = GetForegroundWindow();
        if (!window)
            return std::nullopt;
        return processOfWindow(reinterpret_cast<WId>(window));
    }

    void putInFront(QWidget* widget) override
    {
        const HWND window = reinterpret_cast<HWND>(widget->winId());
        SetForegroundWindow(window);
        BringWindowToTop(window);
    }
};

} // namespace

qint64 processOfWindow(WId window)
{
    DWORD process = 0;
    // The foreground window may be destroyed at any time; no thread owns it then.
    if (GetWindowThreadProcessId(reinterpret_cast<HWND>(window), &process) == 0)
        return ForegroundWindow::UnknownProcess;
    return process;
}

ForegroundWindow& platformForegroundWindow()
{
    static UserForegroundWindow window;
    return window;
}
