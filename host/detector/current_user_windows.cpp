#include "host/detector/current_user.h"

#include <windows.h>

#include <exception>
#include <iterator>
#include <string_view>

#include "foundation/exceptions.h"
#include "foundation/text.h"
#include "host/detector/token_information_windows.h"

namespace detector {

namespace {

// The system's code for access denied, as tokenInformation words it.
const std::string accessDenied = "5";

} // namespace

std::string currentUserName() {
    wchar_t name[257] = {};
    DWORD size = std::size(name);
    if (!GetUserNameW(name, &size)) {
        throw InternalError();
    }
    return utf16ToUtf8(name);
}

namespace native {

std::optional<std::string> processOwnerName(std::uint32_t processId) {
    std::vector<std::uint8_t> bytes;
    try {
        bytes = tokenInformation(TokenUser, processId);
    } catch (const std::exception& failure) {
        if (failure.what() == accessDenied) {
            return std::nullopt;
        }
        throw InternalError();
    }
    if (bytes.size() < sizeof(TOKEN_USER)) {
        throw InternalError();
    }
    const auto* user = reinterpret_cast<const TOKEN_USER*>(bytes.data());
    wchar_t name[257] = {};
    wchar_t domain[257] = {};
    DWORD nameSize = std::size(name);
    DWORD domainSize = std::size(domain);
    SID_NAME_USE use{};
    if (!LookupAccountSidW(nullptr, user->User.Sid, name, &nameSize, domain, &domainSize, &use)) {
        throw InternalError();
    }
    return utf16ToUtf8(std::wstring_view(name, nameSize));
}

} // namespace native

} // namespace detector
