#include "host/host_facts.h"

#include <mutex>

#include "foundation/text.h"
#include "host/file_version.h"
#include "host/host_files.h"

namespace {

const std::string unknownVersion = "0.0.0.0";
const std::string noVersion = "-";

std::string readVersionText(const std::string& path) {
    const auto version = readFileVersion(path);
    if (!version) {
        return unknownVersion;
    }
    return versionText(version->major, version->minor, version->build, version->revision);
}

// The last version read, with the file it came from (no path before the first read); the window
// and the report ask from two threads.
struct VersionCache {
    std::mutex mutex;
    std::string path;
    FileStamp stamp;
    std::string text;
};

} // namespace

std::string fileVersionText() {
    const std::string path = installPathOf(hostFileName);
    const std::optional<FileStamp> stamp = fileVersionStamp(path);
    if (!stamp) {
        return unknownVersion;
    }
    static VersionCache cache;
    const std::lock_guard<std::mutex> lock(cache.mutex);
    if (cache.path != path || cache.stamp != *stamp) {
        cache.text = readVersionText(path);
        cache.path = path;
        cache.stamp = *stamp;
    }
    return cache.text;
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
