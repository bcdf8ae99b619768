#pragma once

#include <optional>
#include <string>

// The tray icon's tooltip, code page 1251: the window's title in the language in force and the
// host application's version without its first and last number ("%1 %2"). The native half cuts
// it to the tooltip's room. A notice (a failed server's cause, a held port) follows on a line of
// its own. While a report is being collected the tip says so instead, after the title.
std::string trayTipText(const std::string& titleId, const std::string& notice = std::string());

// Set when a report begins and cleared when it ends, by the interface thread.
void setReportBeingCollected(bool collecting);

// The notice of a server that the watchdog gave up on: the line of the error log that tells why
// (UTF-8, shown in code page 1251), or a sentence saying that the log tells nothing.
std::string failureNotice(const std::optional<std::string>& cause);
