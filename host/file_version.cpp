#include "host/host_facts.h"

#include "foundation/text.h"
#include "host/file_version.h"
#include "host/host_files.h"

namespace {

const std::string unknownVersion = "0.0.0.0";
const std::string noVersion = "-";

} // namespace

std::string fileVersionText() {
    const auto version = readFileVersion(installPathOf(hostFileName));
    if (!version) {
        return unknownVersion;
    }
    return versionText(version->major, version->minor, version->build, version->revision);
}

std::string versionTail(const std::string& version) {
    const auto dot = version.find('.');
    if (dot == std::string::npos) {
        return noVersion;
    }
    return version.substr(dot + 1);
}

std::string versionMiddle(const std::string& version) {
    const std::string tail = versionTail(version);
    if (tail == noVersion) {
        return noVersion;
    }
    return tail.substr(0, tail.rfind('.'));
}
