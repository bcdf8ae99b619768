#include "diagnostics/security_info.h"

#include "foundation/exceptions.h"

// A POSIX system has no security centre: no product is registered, and the health library is
// missing as it is on a Windows without one, which costs the report its antivirus line.

namespace detector {

namespace {

class AbsentSecurityCentre : public SecurityCentre {
public:
    std::wstring firstProductName(const wchar_t*) override { return L""; }
    void loadHealth() override { throw LoadLibraryError("WSCAPI.dll"); }
    HealthAnswer health(std::uint32_t) override { return HealthAnswer{}; }
};

} // namespace

std::unique_ptr<SecurityCentre> openSecurityCentre() {
    return std::make_unique<AbsentSecurityCentre>();
}

} // namespace detector
