#include "panel/layout_stream.h"

#include "foundation/text.h"

// The layout's path goes through the program's 8-bit text, code page 1251, as on Windows, so a
// letter outside it is lost; file names here are UTF-8 again.
std::ifstream openLayoutStream(const std::string& path) {
    return std::ifstream(cp1251ToUtf8(utf8ToCp1251(path)), std::ios::binary);
}
