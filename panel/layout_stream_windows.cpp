#include "panel/layout_stream.h"

#include "foundation/text.h"

// The layout is opened by its narrow name in code page 1251; the runtime's narrow open shares the
// file with everyone, so the server or an editor may hold it meanwhile.
std::ifstream openLayoutStream(const std::string& path) {
    return std::ifstream(utf8ToCp1251(path), std::ios::binary);
}
