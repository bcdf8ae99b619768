#include "panel/display_scale.h"

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace {

TEST(DisplayScaleTest, DesignUnitStaysAsItIs) {
    const DisplayScale scale;
    EXPECT_EQ(scale.scale({480, 360}), PixelPair(480, 360));
    EXPECT_EQ(scale.scale({-5, 0}), PixelPair(-5, 0));
}

TEST(DisplayScaleTest, EachAxisScalesByItsOwnDensity) {
    const DisplayScale scale{144, 120};
    EXPECT_EQ(scale.scale({100, 100}), PixelPair(150, 125));
}

TEST(DisplayScaleTest, HalvesRoundAwayFromZero) {
    const DisplayScale scale{144, 144};
    EXPECT_EQ(scale.scale({1, -1}), PixelPair(2, -2));
    EXPECT_EQ(scale.scale({3, -3}), PixelPair(5, -5));
}

TEST(DisplayScaleTest, AScreensDensitiesAreKept) {
    const DisplayScale scale = displayScaleOf(120, 144);
    EXPECT_EQ(scale.horizontalDpi, 120);
    EXPECT_EQ(scale.verticalDpi, 144);
}

// A display driver that cannot tell its density answers 0 (or less); the window keeps its
// designed size on that axis instead of collapsing to nothing.
TEST(DisplayScaleTest, AnAxisWithoutADensityKeepsTheDesignUnit) {
    EXPECT_EQ(displayScaleOf(0, 0).scale({480, 360}), PixelPair(480, 360));
    const DisplayScale noWidth = displayScaleOf(0, 120);
    EXPECT_EQ(noWidth.horizontalDpi, 96);
    EXPECT_EQ(noWidth.verticalDpi, 120);
    const DisplayScale negativeHeight = displayScaleOf(144, -1);
    EXPECT_EQ(negativeHeight.horizontalDpi, 144);
    EXPECT_EQ(negativeHeight.verticalDpi, 96);
    EXPECT_EQ(displayScaleOf(std::numeric_limits<std::int32_t>::min(), 1).horizontalDpi, 96);
}

TEST(MulDivTest, RoundsToNearest) {
    EXPECT_EQ(mulDiv(10, 120, 96), 13); // 12.5
    EXPECT_EQ(mulDiv(7, 120, 96), 9);   // 8.75
    EXPECT_EQ(mulDiv(9, 120, 96), 11);  // 11.25
    EXPECT_EQ(mulDiv(-10, 120, 96), -13);
    EXPECT_EQ(mulDiv(10, -120, 96), -13);
    EXPECT_EQ(mulDiv(10, 120, -96), -13);
    EXPECT_EQ(mulDiv(-10, -120, 96), 13);
}

TEST(MulDivTest, ZeroDenominatorGivesMinusOne) {
    EXPECT_EQ(mulDiv(5, 96, 0), -1);
}

TEST(MulDivTest, ResultBeyondThirtyTwoBitsGivesMinusOne) {
    const std::int32_t largest = std::numeric_limits<std::int32_t>::max();
    EXPECT_EQ(mulDiv(largest, 2, 1), -1);
    EXPECT_EQ(mulDiv(largest, 1, 1), largest);
    EXPECT_EQ(mulDiv(std::numeric_limits<std::int32_t>::min(), 1, 1), -1);
    EXPECT_EQ(mulDiv(largest, largest, largest), largest);
}

TEST(DisplayScaleTest, SharedScaleIsReadOnceAndKept) {
    const DisplayScale& first = sharedDisplayScale();
    EXPECT_EQ(&first, &sharedDisplayScale());
    EXPECT_GT(first.horizontalDpi, 0);
    EXPECT_GT(first.verticalDpi, 0);
}

} // namespace
