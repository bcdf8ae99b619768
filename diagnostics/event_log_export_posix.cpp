#include "diagnostics/event_log_export.h"

// A POSIX system keeps no Windows event log, so there is nothing to export.
std::optional<std::string> systemToolFolder() {
    return std::nullopt;
}
