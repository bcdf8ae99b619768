#include "host/detector/launch_process.h"

#include "foundation/filesys.h"

namespace detector {

bool launchProcess(const std::string& path, const std::string& arguments) {
    const std::string folder = path.empty() ? std::string() : filesys::directoryOf(path);
    return native::startDetached(path, arguments, folder);
}

} // namespace detector
