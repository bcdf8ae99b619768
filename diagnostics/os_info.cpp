#include "diagnostics/os_info.h"

#include <vector>

#include "diagnostics/report_words.h"
#include "foundation/exceptions.h"
#include "foundation/messages/panel_messages.h"
#include "foundation/text.h"

namespace detector {

namespace {

constexpr std::uint8_t workstation = 1;

std::string numberPair(std::uint32_t major, std::uint32_t minor) {
    return std::to_string(major) + "." + std::to_string(minor);
}

std::string version6Name(std::uint32_t minor, bool isServer) {
    switch (minor) {
    case 0:
        return isServer ? "Server 2008" : "Vista";
    case 1:
        return isServer ? "Server 2008 R2" : "7";
    case 2:
        return isServer ? "Server 2012" : "8";
    case 3:
        return isServer ? "Server 2012 R2" : "8.1";
    default:
        return "";
    }
}

// Major, minor and build from a text like "10.0.19045"; whatever goes wrong is an internal error.
void readManagementVersion(const std::string& text, WindowsVersion& version) {
    try {
        const std::vector<std::string> parts = splitText(text.c_str(), '.', false, false);
        const int major = readInt(parts.at(0));
        const int minor = readInt(parts.at(1));
        const int build = readInt(parts.at(2));
        version.major = static_cast<std::uint32_t>(major);
        version.minor = static_cast<std::uint32_t>(minor);
        version.build = static_cast<std::uint32_t>(build);
    } catch (const std::exception&) {
        throw InternalError();
    }
}

} // namespace

std::string windowsVersionName(std::uint32_t major, std::uint32_t minor, std::uint32_t build,
                               bool isServer) {
    if (major == 5) {
        if (minor == 0) {
            return "2000";
        }
        return isServer ? "Server 2003" : "XP";
    }
    if (major == 6) {
        return version6Name(minor, isServer);
    }
    if (major == 10) {
        // Every server of version 10 carries this one name, whatever its build.
        if (isServer) {
            return "Server 2016 Technical Preview";
        }
        return build < 22000 ? "10" : "11";
    }
    return isServer ? "Server " + numberPair(major, minor) : numberPair(major, minor);
}

std::uint8_t bitnessOf(const std::string& programFiles) {
    if (programFiles.size() <= 4) {
        return 32;
    }
    return programFiles.find("(x86)") != std::string::npos ? 64 : 32;
}

OsInfo windowsOsInfo(const WindowsFacts& facts) {
    WindowsVersion version = facts.version;
    if (version.major > 5 && version.minor > 1) {
        readManagementVersion(facts.managementVersion(), version);
    }
    OsInfo info;
    info.name = "Windows";
    info.isServer = version.productType != workstation;
    info.versionName =
        windowsVersionName(version.major, version.minor, version.build, info.isServer);
    info.bitness = bitnessOf(facts.programFiles);
    info.isAdmin = facts.inAdministratorsGroup;
    info.majorVersion = version.major;
    info.servicePack = numberPair(version.servicePackMajor, version.servicePackMinor);
    return info;
}

std::string osSectionText(const OsInfo& info) {
    const std::string bitness = std::to_string(info.bitness);
    const std::string servicePack =
        info.servicePack == "0.0"
            ? ""
            : formatReportWords(panelmsg::servicePackPart, info.servicePack.c_str());
    return formatReportWords(panelmsg::osInfoLine, info.name.c_str(), info.versionName.c_str(),
                             bitness.c_str(), info.isServer ? " Server" : "", servicePack.c_str());
}

std::string osSection() {
    return osSectionText(queryOsInfo());
}

} // namespace detector
