#include "host/detector/launch_process.h"

namespace detector {

namespace {

// The path before its last separator of either kind; a bare name is its own folder.
std::string folderOf(const std::string& path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string::npos ? path : path.substr(0, separator);
}

} // namespace

bool launchProcess(const std::string& path, const std::string& arguments) {
    const std::string folder = path.empty() ? std::string() : folderOf(path);
    return native::startDetached(path, arguments, folder);
}

} // namespace detector
