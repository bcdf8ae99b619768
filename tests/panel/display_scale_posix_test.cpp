#include "panel/display_scale.h"

#include <cstdlib>
#include <stdexcept>

#include <gtest/gtest.h>

#include "tests/support/panel/expect_failure.h"

namespace {

// Restores the environment's density when a test ends.
class DpiVariable {
public:
    DpiVariable() {
        if (const char* value = std::getenv("CORVANITE_DPI")) {
            saved_ = value;
            had_ = true;
        }
    }
    ~DpiVariable() {
        if (had_) {
            setenv("CORVANITE_DPI", saved_.c_str(), 1);
        } else {
            unsetenv("CORVANITE_DPI");
        }
    }
    void set(const char* value) { setenv("CORVANITE_DPI", value, 1); }
    void clear() { unsetenv("CORVANITE_DPI"); }

private:
    std::string saved_;
    bool had_ = false;
};

TEST(DisplayScalePosixTest, WithoutAScreenTheDesignUnitHolds) {
    DpiVariable variable;
    variable.clear();
    const DisplayScale scale = screenDisplayScale();
    EXPECT_EQ(scale.horizontalDpi, 96);
    EXPECT_EQ(scale.verticalDpi, 96);
}

TEST(DisplayScalePosixTest, TheEnvironmentNamesAnotherDensity) {
    DpiVariable variable;
    variable.set("144");
    const DisplayScale scale = screenDisplayScale();
    EXPECT_EQ(scale.horizontalDpi, 144);
    EXPECT_EQ(scale.verticalDpi, 144);
}

TEST(DisplayScalePosixTest, ADensityOfZeroOrLessKeepsTheDesignUnit) {
    DpiVariable variable;
    for (const char* density : {"0", "-120"}) {
        variable.set(density);
        const DisplayScale scale = screenDisplayScale();
        EXPECT_EQ(scale.horizontalDpi, 96) << density;
        EXPECT_EQ(scale.verticalDpi, 96) << density;
    }
}

TEST(DisplayScalePosixTest, ADensityThatIsNoNumberFailsAsTheNumberReaderDoes) {
    DpiVariable variable;
    variable.set("large");
    expectFailure<std::invalid_argument>([] { screenDisplayScale(); }, "invalid stoi argument");
}

} // namespace
