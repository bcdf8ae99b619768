#include "panel/tray_tip.h"

#include "foundation/message_catalogue.h"
#include "host/host_facts.h"

std::string trayTipText(const std::string& titleId) {
    const std::string title = panelMessages.text(titleId.c_str());
    const std::string version = versionMiddle(fileVersionText());
    return substitutePlaceholders("%1 %2", title.c_str(), version.c_str());
}
