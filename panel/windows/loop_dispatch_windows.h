#pragma once

#include <windows.h>

// One message of the program's message loop on its way to the window.
//
// The window is no dialog, yet the system's dialog navigation gives it Tab and the arrow keys. Left
// alone, that navigation would also turn Esc into IDCANCEL (2) and Enter into IDOK (1): the
// commands Stop and Run, whatever has the focus and even while those buttons are disabled. So Esc
// hides the window as its close box does, and Enter acts only on the focused button or link.
void dispatchLoopMessage(MSG& message, HACCEL accelerators);
