#include "diagnostics/security_info.h"

#include "diagnostics/os_info.h"
#include "diagnostics/report_words.h"
#include "foundation/exceptions.h"
#include "foundation/messages/panel_messages.h"
#include "foundation/text.h"

namespace detector {

namespace {

constexpr ProviderState good = 0;
constexpr ProviderState poor = 2;
constexpr ProviderState highestState = 3;

ProviderState checkedHealth(SecurityCentre& centre, std::uint32_t provider) {
    const HealthAnswer answer = centre.health(provider);
    if (answer.result != 0 || answer.health > highestState) {
        throw InternalError();
    }
    return answer.health;
}

// The health of every provider, asked only while the security centre service itself is good.
void readHealth(SecurityCentre& centre, SecurityInfo& info) {
    info.serviceState = checkedHealth(centre, provider::service);
    if (info.serviceState != good) {
        return;
    }
    info.firewallState = checkedHealth(centre, provider::firewall);
    if (info.firewallName.empty() && info.firewallState == good) {
        info.firewallName = L"Windows Firewall";
    }
    info.autoUpdateState = checkedHealth(centre, provider::autoUpdate);
    info.antivirusState = checkedHealth(centre, provider::antivirus);
    info.antispywareState = checkedHealth(centre, provider::antispyware);
    info.userAccountControlState = checkedHealth(centre, provider::userAccountControl);
}

} // namespace

std::string providerStateName(ProviderState state) {
    switch (state) {
    case 0:
        return "GOOD";
    case 1:
        return "NOTMONITORED";
    case 2:
        return "POOR";
    case 3:
        return "SNOOZE";
    default:
        return "UNKNOWN";
    }
}

SecurityInfo securityInfoFrom(bool isServer,
                              const std::function<std::unique_ptr<SecurityCentre>()>& openCentre) {
    SecurityInfo info;
    if (isServer) {
        return info;
    }
    const std::unique_ptr<SecurityCentre> centre = openCentre();
    // Only the first product of each kind is reported, however many are registered.
    info.antivirusName = centre->firstProductName(L"SELECT * FROM AntiVirusProduct");
    info.antivirusState = poor;
    info.firewallName = centre->firstProductName(L"SELECT * FROM FirewallProduct");
    info.firewallState = poor;
    centre->loadHealth();
    readHealth(*centre, info);
    return info;
}

SecurityInfo querySecurityInfo() {
    return securityInfoFrom(queryOsInfo().isServer, openSecurityCentre);
}

std::string antivirusSectionText(const SecurityInfo& info) {
    // The name goes the way of the user's words: letters outside code page 1251 become "?".
    const std::string name = cp1251ToUtf8(toCp1251(info.antivirusName));
    const std::string state = providerStateName(info.antivirusState);
    return formatReportWords(panelmsg::antivirusLine, name.c_str(), state.c_str());
}

std::string antivirusSection() {
    return antivirusSectionText(querySecurityInfo());
}

} // namespace detector
