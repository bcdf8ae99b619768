#include "tests/support/host/host_double.h"

std::string systemPath(const std::string& buildPath) {
    // Wine maps the root of the build machine's file system to drive Z:.
    return buildPath.empty() || buildPath.front() != '/' ? buildPath : "Z:" + buildPath;
}
