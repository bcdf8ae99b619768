#include "panel/layout_stream.h"

// File names here are UTF-8, as the program's paths are.
std::ifstream openLayoutStream(const std::string& path) {
    return std::ifstream(path, std::ios::binary);
}
