#include "panel/display_scale.h"

#include <windows.h>

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace {

// The portable MulDiv must answer as the system's does, edge cases included.
TEST(DisplayScaleWindowsTest, MulDivAnswersAsTheSystemDoes) {
    const std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    // The smallest number itself is left out: negating it, as a negative denominator asks,
    // overflows inside some implementations of the system call.
    const std::int32_t smallest = std::numeric_limits<std::int32_t>::min() + 1;
    const std::int32_t values[] = {0,    1,     -1,      3,        -3,          7,
                                   10,   -10,   47,      95,       96,          97,
                                   1000, -1000, largest, smallest, largest / 2, smallest / 2};
    const std::int32_t densities[] = {96, 120, 144, 192, 72, 1, -96, 0};
    for (std::int32_t value : values) {
        for (std::int32_t numerator : densities) {
            for (std::int32_t denominator : densities) {
                EXPECT_EQ(mulDiv(value, numerator, denominator),
                          MulDiv(value, numerator, denominator))
                    << value << " * " << numerator << " / " << denominator;
            }
        }
    }
}

TEST(DisplayScaleWindowsTest, TheScreenTellsItsDensity) {
    HDC screen = GetDC(nullptr);
    ASSERT_NE(screen, nullptr);
    const int horizontal = GetDeviceCaps(screen, LOGPIXELSX);
    const int vertical = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    const DisplayScale scale = screenDisplayScale();
    EXPECT_EQ(scale.horizontalDpi, horizontal);
    EXPECT_EQ(scale.verticalDpi, vertical);
}

} // namespace
