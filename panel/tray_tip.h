#pragma once

#include <string>

// The tray icon's tooltip, code page 1251: the window's title in the language in force and the
// host application's version without its first and last number ("%1 %2"). The native half cuts
// it to the tooltip's room.
std::string trayTipText(const std::string& titleId);
