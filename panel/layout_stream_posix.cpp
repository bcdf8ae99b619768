#include "panel/layout_stream.h"

// File names are UTF-8 here, as the path already is.
std::ifstream openLayoutStream(const std::string& path) {
    return std::ifstream(path, std::ios::binary);
}
