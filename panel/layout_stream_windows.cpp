#include "panel/layout_stream.h"

#include <filesystem>

#include "foundation/text.h"

// The layout is opened by its UTF-16 name: a folder of any name, on a system of any code page.
std::ifstream openLayoutStream(const std::string& path) {
    return std::ifstream(std::filesystem::path(utf8ToUtf16(path)), std::ios::binary);
}
