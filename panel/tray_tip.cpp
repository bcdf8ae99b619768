#include "panel/tray_tip.h"

#include <atomic>

#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/host_facts.h"

namespace {

std::atomic<bool> reportBeingCollected{false};

} // namespace

void setReportBeingCollected(bool collecting) {
    reportBeingCollected.store(collecting, std::memory_order_relaxed);
}

std::string trayTipText(const std::string& titleId, const std::string& notice) {
    const std::string title = panelMessages.text(titleId.c_str());
    if (reportBeingCollected.load(std::memory_order_relaxed)) {
        return panelMessages.format(panelmsg::reportBeingCollected, title.c_str());
    }
    const std::string version = versionMiddle(fileVersionText());
    std::string tip = substitutePlaceholders("%1 %2", title.c_str(), version.c_str());
    if (!notice.empty()) {
        tip += "\n" + notice;
    }
    return tip;
}

std::string failureNotice(const std::optional<std::string>& cause) {
    if (!cause || cause->empty()) {
        return panelMessages.text(panelmsg::failedWithoutCause);
    }
    return utf8ToCp1251(*cause);
}
