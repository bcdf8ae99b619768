#include "panel/startup_state.h"

#include "foundation/client_properties.h"
#include "foundation/message_catalogue.h"
#include "host/log_level.h"
#include "host/nginx_config.h"
#include "panel/layout_ids.h"

namespace {

std::int32_t languageSelection() {
    const int language = panelMessages.language.load(std::memory_order_relaxed);
    return language == 0 || language == 1 ? language : 2;
}

// The configuration is read anew for each level compared.
std::int32_t logLevelSelection() {
    for (std::size_t index = 0; index < LogLevelTable.size(); ++index) {
        if (NginxConfig().currentLevel() == LogLevelTable[index].word) {
            return static_cast<std::int32_t>(index);
        }
    }
    return 0;
}

} // namespace

std::int32_t startupSelection(std::int32_t widgetId) {
    switch (widgetId) {
    case widgetid::languageBox:
        return languageSelection();
    case widgetid::logLevelBox:
        return logLevelSelection();
    default:
        return 0;
    }
}

bool startupChecked(std::int32_t widgetId) {
    switch (widgetId) {
    case widgetid::portAutoselectBox:
        return isPortAutoselect();
    case widgetid::uncPathsBox:
        return isUseUncPaths();
    default:
        return false;
    }
}
