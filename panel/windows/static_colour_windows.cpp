#include "panel/windows/static_colour_windows.h"

#include <exception>
#include <string>

#include "diagnostics/os_info.h"

namespace {

// Made once at start and never freed.
const HBRUSH staticBackground = CreateSolidBrush(RGB(0xF9, 0xF9, 0xF9));
// 0 until the first static control is drawn.
int osGeneration = 0;

} // namespace

int osGenerationOf(const std::function<std::string()>& versionName) {
    try {
        return std::stoi(versionName());
    } catch (const std::exception&) {
        return 10;
    }
}

HBRUSH staticControlBrush(HDC context) {
    SetBkMode(context, TRANSPARENT);
    if (osGeneration == 0) {
        osGeneration = osGenerationOf([] { return detector::queryOsInfo().versionName; });
    }
    if (osGeneration < 11) {
        return static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    }
    return staticBackground;
}
