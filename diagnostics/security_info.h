#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

// The security products that Windows knows of, and how healthy it finds them.
namespace detector {

// A health value as the security centre gives it: 0 good, 1 not monitored, 2 poor, 3 snoozed.
using ProviderState = std::uint32_t;

// "GOOD", "NOTMONITORED", "POOR", "SNOOZE", or "UNKNOWN" for any other value.
std::string providerStateName(ProviderState state);

// The security centre's providers by their numbers.
namespace provider {
constexpr std::uint32_t firewall = 0x01;
constexpr std::uint32_t autoUpdate = 0x02;
constexpr std::uint32_t antivirus = 0x04;
constexpr std::uint32_t antispyware = 0x08;
constexpr std::uint32_t userAccountControl = 0x20;
constexpr std::uint32_t service = 0x40;
} // namespace provider

struct SecurityInfo {
    ProviderState serviceState = 1;
    ProviderState autoUpdateState = 1;
    std::wstring antivirusName;
    ProviderState antivirusState = 1;
    std::wstring firewallName;
    ProviderState firewallState = 1;
    ProviderState userAccountControlState = 1;
    ProviderState antispywareState = 1;
};

// One answer of the health call: the call's own result and the health it reported.
struct HealthAnswer {
    std::int32_t result = 0;
    std::uint32_t health = 0;
};

// The system's security centre as one report asks it: a session that is opened once, two product
// queries, then the health function. The platform gives one object per use; its end closes
// everything it opened, the health library first.
class SecurityCentre {
public:
    virtual ~SecurityCentre() = default;
    // The display name of the first product of the WQL query that has one; empty when none has.
    virtual std::wstring firstProductName(const wchar_t* query) = 0;
    // Makes the health function ready. Raises LoadLibraryError when it can't be found.
    virtual void loadHealth() = 0;
    virtual HealthAnswer health(std::uint32_t provider) = 0;
};

// The record from the security centre; a server gets the start values without being asked.
// Raises detector::InternalError for a failed health call or a health value above 3.
SecurityInfo securityInfoFrom(bool isServer,
                              const std::function<std::unique_ptr<SecurityCentre>()>& openCentre);

// The security centre of this system, opened (the management session) for one use.
std::unique_ptr<SecurityCentre> openSecurityCentre();

// The record of this machine.
SecurityInfo querySecurityInfo();

// The report's line about the antivirus product.
std::string antivirusSectionText(const SecurityInfo& info);
std::string antivirusSection();

} // namespace detector
