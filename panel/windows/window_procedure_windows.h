#pragma once

#include <windows.h>

// The one procedure of the main window's class. It binds the WindowImpWindows given at creation
// to the window when WM_NCCREATE arrives and forwards every message to it; the few messages
// before that go to the default procedure. A failure of the object's handling is kept for the
// message loop to throw again, since it can't unwind through the system's dispatch.
LRESULT CALLBACK staticWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
