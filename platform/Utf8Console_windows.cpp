#include "Utf8Console.h"

#include <qt_windows.h>

Utf8Console::Utf8Console()
    : m_previous(GetConsoleOutputCP())
{
    SetConsoleOutputCP(CP_UTF8);
}

Utf8Console::~Utf8Console()
{
    // The console belongs to the shell too.
    if (m_previous != 0)
        SetConsoleOutputCP(m_previous);
}
