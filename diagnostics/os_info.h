#pragma once

#include <cstdint>
#include <functional>
#include <string>

// Which system the control panel runs on, for the report and for the native window.
namespace detector {

struct OsInfo {
    std::string name;
    // The system's own name for its version, such as "10", "8.1" or "Server 2012 R2".
    std::string versionName;
    std::uint8_t bitness = 32;
    // The process token lists the local Administrators group, whatever User Account Control made
    // of it.
    bool isAdmin = false;
    std::uint32_t majorVersion = 0;
    bool isServer = false;
    // Service pack major and minor number with a point between; "0.0" for none.
    std::string servicePack;
};

// What the version call of Windows tells about itself.
struct WindowsVersion {
    std::uint32_t major = 0;
    std::uint32_t minor = 0;
    std::uint32_t build = 0;
    std::uint16_t servicePackMajor = 0;
    std::uint16_t servicePackMinor = 0;
    // 1 for a workstation; a domain controller and a server are anything else.
    std::uint8_t productType = 1;
};

// Raw facts of Windows, from which the record is made.
struct WindowsFacts {
    WindowsVersion version;
    // The "version" text of the management service's operating system object, such as
    // "10.0.19045"; asked only when the version call's answer can't be trusted. Raises
    // detector::InternalError when the service can't be asked.
    std::function<std::string()> managementVersion;
    bool inAdministratorsGroup = false;
    // The Program Files folder as a 32-bit process sees it.
    std::string programFiles;
};

// The row of the naming table for these numbers; empty for a version 6 beyond 6.3.
std::string windowsVersionName(std::uint32_t major, std::uint32_t minor, std::uint32_t build,
                               bool isServer);

// 64 when the Program Files folder of a 32-bit process is the " (x86)" one, else 32.
std::uint8_t bitnessOf(const std::string& programFiles);

// The record from Windows' raw facts. Versions above 6.1 by the version call are taken from the
// management service instead, since Windows tells an unmanifested program an old version. Raises
// detector::InternalError when that text isn't three numbers.
OsInfo windowsOsInfo(const WindowsFacts& facts);

// The record of this machine. Raises detector::InternalError, or what the management service
// raises.
OsInfo queryOsInfo();

// The report's line about the system.
std::string osSectionText(const OsInfo& info);
std::string osSection();

} // namespace detector
