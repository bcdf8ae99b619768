#pragma once

#include <optional>
#include <string>

// The Application event log, exported by the system's own tool into the logs folder so that it
// travels in info.zip.

// The system folder that holds "wevtutil.exe"; nothing where the system has none.
std::optional<std::string> systemToolFolder();

// Deletes the earlier export, starts "<toolFolder>/wevtutil.exe" to export the log to the file,
// and waits up to 5 seconds for the file. Ends silently when there is no folder, no tool, or the
// tool doesn't start; the tool's exit code is not looked at.
void exportEventLogWith(const std::optional<std::string>& toolFolder,
                        const std::string& eventLogFile);

// The export into the installation's logs folder.
void exportEventLog();
