#include "diagnostics/os_info.h"

#include <vector>

#include <windows.h>

#include "diagnostics/wmi_session_windows.h"
#include "foundation/exceptions.h"
#include "foundation/filesys.h"
#include "foundation/text.h"
#include "host/detector/token_information_windows.h"

namespace detector {

namespace {

constexpr std::uint32_t tokenGroupsClass = 2;

WindowsVersion versionCall() {
    OSVERSIONINFOEXW answer{};
    answer.dwOSVersionInfoSize = sizeof(answer);
    if (!GetVersionExW(reinterpret_cast<OSVERSIONINFOW*>(&answer))) {
        throw InternalError();
    }
    WindowsVersion version;
    version.major = answer.dwMajorVersion;
    version.minor = answer.dwMinorVersion;
    version.build = answer.dwBuildNumber;
    version.servicePackMajor = answer.wServicePackMajor;
    version.servicePackMinor = answer.wServicePackMinor;
    version.productType = answer.wProductType;
    return version;
}

std::string managementVersion() {
    WmiSession session;
    session.connect(L"ROOT\\CIMV2");
    const ComPtr<IEnumWbemClassObject> objects =
        session.query(L"SELECT * FROM Win32_OperatingSystem");
    const std::optional<std::wstring> version = nextObjectText(objects.get(), L"version");
    if (!version) {
        throw InternalError();
    }
    return utf16ToUtf8(*version);
}

// The group entries' attributes are not looked at: an administrator whose rights User Account
// Control filtered out still counts.
bool tokenListsAdministrators() {
    SID_IDENTIFIER_AUTHORITY ntAuthority = SECURITY_NT_AUTHORITY;
    PSID administrators = nullptr;
    if (!AllocateAndInitializeSid(&ntAuthority, 2, SECURITY_BUILTIN_DOMAIN_RID,
                                  DOMAIN_ALIAS_RID_ADMINS, 0, 0, 0, 0, 0, 0, &administrators)) {
        throw InternalError();
    }
    bool found = false;
    try {
        const std::vector<std::uint8_t> bytes = tokenInformation(tokenGroupsClass, 0);
        const auto* groups = reinterpret_cast<const TOKEN_GROUPS*>(bytes.data());
        for (DWORD i = 0; !found && i < groups->GroupCount; ++i) {
            found = EqualSid(groups->Groups[i].Sid, administrators) != FALSE;
        }
    } catch (...) {
        FreeSid(administrators);
        throw;
    }
    FreeSid(administrators);
    return found;
}

} // namespace

OsInfo queryOsInfo() {
    WindowsFacts facts;
    facts.version = versionCall();
    facts.managementVersion = managementVersion;
    facts.inAdministratorsGroup = tokenListsAdministrators();
    facts.programFiles = filesys::programFilesFolder();
    return windowsOsInfo(facts);
}

} // namespace detector
