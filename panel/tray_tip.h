#pragma once

#include <string>

// The tray icon's tooltip, code page 1251: the window's title in the language in force and the
// host application's version without its first and last number ("%1 %2"). The native half cuts
// it to the tooltip's room.
// While a report is being collected the tip says so instead, after the title.
std::string trayTipText(const std::string& titleId);

// Set when a report begins and cleared when it ends, by the interface thread.
void setReportBeingCollected(bool collecting);
