#include "diagnostics/os_info.h"

#include <fstream>
#include <map>

#include <sys/utsname.h>
#include <unistd.h>

#include "foundation/exceptions.h"
#include "foundation/text.h"

// Without Windows the record describes the POSIX system in the same fields: its name and version
// from os-release (the kernel's when that file is missing), 64 bits for a machine type such as
// x86_64 or aarch64, and
// root as the administrator. There are no server editions and no service packs here.

namespace detector {

namespace {

std::map<std::string, std::string> osRelease() {
    std::ifstream in("/etc/os-release");
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::map<std::string, std::string> values = parseKeyValues(text.c_str(), '=', true);
    for (auto& [key, value] : values) {
        if (value.size() >= 2 && value.front() == '"' && value.back() == '"') {
            value = value.substr(1, value.size() - 2);
        }
    }
    return values;
}

std::string valueOr(const std::map<std::string, std::string>& values, const char* key,
                    const std::string& fallback) {
    const auto found = values.find(key);
    return found == values.end() || found->second.empty() ? fallback : found->second;
}

std::uint32_t leadingNumber(const std::string& text) {
    std::uint32_t number = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') {
            break;
        }
        number = number * 10 + static_cast<std::uint32_t>(c - '0');
    }
    return number;
}

} // namespace

OsInfo queryOsInfo() {
    utsname system{};
    if (uname(&system) != 0) {
        throw InternalError();
    }
    const std::map<std::string, std::string> release = osRelease();
    OsInfo info;
    info.name = valueOr(release, "NAME", system.sysname);
    info.versionName = valueOr(release, "VERSION_ID", system.release);
    info.bitness = std::string(system.machine).find("64") != std::string::npos ? 64 : 32;
    info.isAdmin = geteuid() == 0;
    info.majorVersion = leadingNumber(info.versionName);
    info.isServer = false;
    info.servicePack = "0.0";
    return info;
}

} // namespace detector
