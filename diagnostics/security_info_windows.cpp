#include "diagnostics/security_info.h"

#include <windows.h>

#include "diagnostics/wmi_session_windows.h"
#include "foundation/exceptions.h"
#include "host/shared_library.h"

namespace detector {

namespace {

// WscGetSecurityProviderHealth(provider, out health); the SDK header isn't part of the toolchain.
using HealthFunction = HRESULT(WINAPI*)(DWORD provider, DWORD* health);

// Security Center 2 through the management service, and the health call of "WSCAPI.dll". The
// library is released before the session, which closes COM last.
class WindowsSecurityCentre : public SecurityCentre {
public:
    std::wstring firstProductName(const wchar_t* query) override {
        session_.connect(L"ROOT\\SecurityCenter2");
        const ComPtr<IEnumWbemClassObject> objects = session_.query(query);
        // A product without a display name is passed over for the next one.
        while (const std::optional<std::wstring> name =
                   nextObjectText(objects.get(), L"displayName")) {
            if (!name->empty()) {
                return *name;
            }
        }
        return L"";
    }

    void loadHealth() override {
        library_ = std::make_unique<SharedLibrary>("WSCAPI.dll");
        function_ =
            reinterpret_cast<HealthFunction>(library_->symbol("WscGetSecurityProviderHealth"));
    }

    HealthAnswer health(std::uint32_t provider) override {
        DWORD state = 0;
        const HRESULT result = function_(provider, &state);
        return HealthAnswer{static_cast<std::int32_t>(result), state};
    }

private:
    WmiSession session_;
    std::unique_ptr<SharedLibrary> library_;
    HealthFunction function_ = nullptr;
};

} // namespace

std::unique_ptr<SecurityCentre> openSecurityCentre() {
    return std::make_unique<WindowsSecurityCentre>();
}

} // namespace detector
