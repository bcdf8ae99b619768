#pragma once

#include <cstdint>
#include <utility>

// Width and height, or left and top, in pixels.
using PixelPair = std::pair<std::int32_t, std::int32_t>;

// The layout file gives sizes and positions for a screen of 96 dots per inch; DisplayScale turns
// them into device pixels of the screen the program runs on.
struct DisplayScale {
    static constexpr std::int32_t designDpi = 96;

    std::int32_t horizontalDpi = designDpi;
    std::int32_t verticalDpi = designDpi;

    // Each coordinate times its dots per inch over 96, rounded to nearest.
    PixelPair scale(PixelPair design) const;
};

// number * numerator / denominator with a 64-bit product, rounded half away from zero; -1 for a
// zero denominator or a result beyond 32 bits. The system's own MulDiv answers the same.
std::int32_t mulDiv(std::int32_t number, std::int32_t numerator, std::int32_t denominator);

// The scale of a screen that reports these dots per inch. An axis whose density is 0 or less, as
// from a display driver that cannot tell, keeps the design unit: the window is drawn at its
// designed size rather than shrunk to nothing.
DisplayScale displayScaleOf(std::int32_t horizontalDpi, std::int32_t verticalDpi);

// The screen's dots per inch, read from the system and given to displayScaleOf. Windows: the
// screen's device context, failing with "CV-003001" when there is none. Elsewhere: 96, or the
// number in CORVANITE_DPI.
DisplayScale screenDisplayScale();

// The program's one scale, read from the screen at its first use and kept: a later change of the
// display is not followed.
const DisplayScale& sharedDisplayScale();
