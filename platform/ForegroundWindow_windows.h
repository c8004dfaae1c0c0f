#pragma once

#include <QtGui/qwindowdefs.h>

//! The process that owns \a window, ForegroundWindow::UnknownProcess when that window is gone.
qint64 processOfWindow(WId window);
