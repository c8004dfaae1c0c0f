// A process with a window of its own, which it makes the foreground window. It writes the window's handle
// as a line, then its window obeys the lines that it reads: "ping" is answered by "pong", "destroy" destroys
// the window and is answered by "destroyed". It ends with its input.

#include <windows.h>

#include <cinttypes>
#include <cstdio>
#include <cstring>
#include <thread>

namespace {

constexpr UINT pingMessage = WM_APP;
constexpr UINT destroyMessage = WM_APP + 1;

void say(const char* line)
{
    std::puts(line);
    std::fflush(stdout);
}

LRESULT CALLBACK handleMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case pingMessage:
        say("pong");
        return 0;
    case destroyMessage:
        DestroyWindow(window);
        say("destroyed");
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

void obey(HWND window, DWORD windowThread)
{
    char line[32];
    while (std::fgets(line, sizeof line, stdin)) {
        if (std::strncmp(line, "ping", 4) == 0)
            PostMessageW(window, pingMessage, 0, 0);
        else if (std::strncmp(line, "destroy", 7) == 0)
            PostMessageW(window, destroyMessage, 0, 0);
    }
    PostThreadMessageW(windowThread, WM_QUIT, 0, 0);
}

} // namespace

int main()
{
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = handleMessage;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"ForeignWindow";
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowW(windowClass.lpszClassName, L"Foreign", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                      50, 50, 400, 300, nullptr, nullptr, windowClass.hInstance, nullptr);
    if (!window)
        return 1;
    SetForegroundWindow(window);
    // Windows itself lets other processes come to the front only with this process's leave.
    AllowSetForegroundWindow(ASFW_ANY);
    std::printf("%" PRIuPTR "\n", reinterpret_cast<std::uintptr_t>(window));
    std::fflush(stdout);

    std::thread reader(obey, window, GetCurrentThreadId());
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0)
        DispatchMessageW(&message);
    reader.join();
    return 0;
}
