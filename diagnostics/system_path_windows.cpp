#include "diagnostics/system_path.h"

#include <algorithm>

std::string systemPathForm(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}
