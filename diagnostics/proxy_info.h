#pragma once

#include <string>

// The user's proxy as Internet Settings hold it.
namespace detector {

struct ProxyInfo {
    std::string server;
    std::string override;
    bool enabled = false;
};

// Reads "ProxyEnable", "ProxyServer" and "ProxyOverride" of the current user. A missing value
// keeps its field empty; nothing is raised for it.
ProxyInfo queryProxyInfo();

// The bypass list as the report shows it. Meant to drop a trailing "<local>", the cut takes the
// last 7 characters whenever the last one is any of "<local>"'s letters, so "*.corp.loc" becomes
// "*.c". A shorter text ending in one of them raises std::length_error.
std::string overrideWithoutLocal(const std::string& override);

// The report's block about the proxy, lines broken with a bare line feed.
std::string proxySectionText(const ProxyInfo& info);
std::string proxySection();

} // namespace detector
