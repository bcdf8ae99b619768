#include "panel/layout_stream.h"

#include <filesystem>

#include "foundation/text.h"

// The layout's path goes through the program's 8-bit text, code page 1251, so a letter outside it
// is lost as it would be on the narrow route. The 1251 text is then opened by its UTF-16 form,
// which gives on every system what the narrow open gives on one whose code page is 1251. The
// runtime's open shares the file with everyone, so the server or an editor may hold it meanwhile.
std::ifstream openLayoutStream(const std::string& path) {
    return std::ifstream(std::filesystem::path(fromCp1251(utf8ToCp1251(path))), std::ios::binary);
}
