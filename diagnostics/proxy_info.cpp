#include "diagnostics/proxy_info.h"

#include <optional>
#include <vector>

#include "diagnostics/report_words.h"
#include "foundation/messages/panel_messages.h"
#include "foundation/registry.h"

namespace detector {

namespace {

const char* const internetSettingsKey =
    "Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";
const std::string localMark = "<local>";

std::string dashWhenEmpty(const std::string& text) {
    return text.empty() ? "-" : text;
}

} // namespace

ProxyInfo queryProxyInfo() {
    ProxyInfo info;
    // A DWORD comes as its four bytes; only the first one counts.
    const std::optional<std::vector<std::uint8_t>> enable =
        readRegistryBytes(RegistryHive::CurrentUser, internetSettingsKey, "ProxyEnable");
    info.enabled = enable && !enable->empty() && enable->front() != 0;
    if (auto server =
            readRegistryText(RegistryHive::CurrentUser, internetSettingsKey, "ProxyServer")) {
        info.server = *server;
    }
    if (auto bypass =
            readRegistryText(RegistryHive::CurrentUser, internetSettingsKey, "ProxyOverride")) {
        info.override = *bypass;
    }
    return info;
}

std::string overrideWithoutLocal(const std::string& override) {
    std::string result = override;
    if (!result.empty() && localMark.find(result.back()) != std::string::npos) {
        // The length wraps around below 7 characters, and resize refuses it.
        result.resize(result.size() - localMark.size());
    }
    return result;
}

std::string proxySectionText(const ProxyInfo& info) {
    const std::string state = reportWords(info.enabled ? panelmsg::on : panelmsg::off);
    const std::string server = dashWhenEmpty(info.server);
    const std::string bypass = dashWhenEmpty(overrideWithoutLocal(info.override));
    return formatReportWords(panelmsg::proxyLines, state.c_str(), server.c_str(), bypass.c_str());
}

std::string proxySection() {
    return proxySectionText(queryProxyInfo());
}

} // namespace detector
