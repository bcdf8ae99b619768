#include "tests/support/host/host_double.h"

std::string systemPath(const std::string& buildPath) {
    return buildPath;
}
