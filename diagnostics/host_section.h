#pragma once

#include <functional>
#include <string>

#include "host/corvanite_host.h"

// The first block of the information report: versions, the server's state, where the server is
// installed and who runs the panel.

struct HostFacts {
    std::string hostVersion;
    std::string libraryVersion;
    ServerStatus status;
    std::string installPath;
    std::string userName;
    bool isAdmin = false;
};

// Where the facts come from; a source that throws costs the whole block.
struct HostSources {
    std::function<bool()> isAdmin;
    std::function<ServerStatus()> status;
    std::function<std::string()> userName;
    std::function<std::string()> installPath;
    std::function<std::string()> libraryVersion;
    std::function<std::string()> hostVersion;
};

// Asks the sources in the order above.
HostFacts gatherHostFacts(const HostSources& sources);

// The sources of this machine and this installation.
HostSources systemHostSources();

// Nine lines, each but the last ended by the line break of the logs.
std::string hostSectionText(const HostFacts& facts);
std::string hostSection();
