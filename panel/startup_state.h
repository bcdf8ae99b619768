#pragma once

#include <cstdint>

// The state a control takes when it is built; after that the control itself is the truth.

// The selected entry of a combo box: the language in force for widget 12 (0 and 1 as they are,
// anything else 2), the log level of nginx.conf for widget 13 ("error", "info", "debug"; the first
// entry when none fits), entry 0 for any other.
std::int32_t startupSelection(std::int32_t widgetId);

// The check of a check box: port autoselection for widget 14, UNC paths for widget 15, unchecked
// for any other.
bool startupChecked(std::int32_t widgetId);
