#include "panel/display_scale.h"

#include <cstdint>
#include <limits>

PixelPair DisplayScale::scale(PixelPair design) const {
    return {mulDiv(design.first, horizontalDpi, designDpi),
            mulDiv(design.second, verticalDpi, designDpi)};
}

namespace {

std::int32_t densityOrDesign(std::int32_t dpi) {
    return dpi > 0 ? dpi : DisplayScale::designDpi;
}

} // namespace

DisplayScale displayScaleOf(std::int32_t horizontalDpi, std::int32_t verticalDpi) {
    return {densityOrDesign(horizontalDpi), densityOrDesign(verticalDpi)};
}

std::int32_t mulDiv(std::int32_t number, std::int32_t numerator, std::int32_t denominator) {
    if (denominator == 0) {
        return -1;
    }
    std::int64_t product = std::int64_t{number} * numerator;
    std::int64_t divisor = denominator;
    if (divisor < 0) {
        product = -product;
        divisor = -divisor;
    }
    const std::int64_t half = divisor / 2;
    const std::int64_t result = (product >= 0 ? product + half : product - half) / divisor;
    constexpr std::int64_t limit = std::numeric_limits<std::int32_t>::max();
    if (result > limit || result < -limit) {
        return -1;
    }
    return static_cast<std::int32_t>(result);
}

const DisplayScale& sharedDisplayScale() {
    static const DisplayScale scale = screenDisplayScale();
    return scale;
}
