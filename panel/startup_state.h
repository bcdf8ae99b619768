#pragma once

#include <cstdint>

// The state a control takes when it is built; after that the control itself is the truth.

// The selected entry of a combo box: the language in force for widgetid::languageBox (0 and 1 as
// they are, anything else 2), the log level of nginx.conf for widgetid::logLevelBox ("error",
// "info", "debug"; the first entry when none fits), entry 0 for any other.
std::int32_t startupSelection(std::int32_t widgetId);

// The check of a check box: port autoselection for widgetid::portAutoselectBox, UNC paths for
// widgetid::uncPathsBox, unchecked for any other.
bool startupChecked(std::int32_t widgetId);
