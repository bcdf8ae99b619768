#include "diagnostics/system_path.h"

// A backslash is an ordinary letter of a POSIX file name, so the path keeps its slashes.
std::string systemPathForm(std::string path) {
    return path;
}
