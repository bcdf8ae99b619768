#include "core/single_instance.h"

#include <gtest/gtest.h>

#include <random>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"

namespace {

// A mutex name of this test's own, so that it never meets a running control panel or another test.
std::string uniqueMutexName() {
    std::random_device random;
    return "CVHControlPanelTest" + std::to_string(random()) + std::to_string(random());
}

// Counts how often the running window's class is asked for.
struct ClassNameProbe {
    int reads = 0;
    ClassNameSource source() {
        return [this] {
            ++reads;
            return std::string("CVHControlPanelTestClass");
        };
    }
};

} // namespace

TEST(SingleInstance, FirstStartCreatesTheMutexAndGoesOn) {
    const std::string name = uniqueMutexName();
    ClassNameProbe probe;
    EXPECT_FALSE(ensureSingleInstance(probe.source(), name));
    EXPECT_EQ(probe.reads, 0);
    EXPECT_TRUE(singleinstance::native::openMutex(name).has_value());
    ASSERT_NE(instanceMutex(), nullptr);
}

// The program ends its process directly after the loop; the mutex is given back before that.
TEST(SingleInstance, ReleasingTheMutexLeavesNoneHeld) {
    const std::string name = uniqueMutexName();
    ClassNameProbe probe;
    ASSERT_FALSE(ensureSingleInstance(probe.source(), name));
    ASSERT_NE(instanceMutex(), nullptr);
    releaseInstanceMutex();
    EXPECT_EQ(instanceMutex(), nullptr);
    releaseInstanceMutex();
    EXPECT_EQ(instanceMutex(), nullptr);
}

TEST(SingleInstance, SecondStartFindsTheFirstAndLooksForItsWindow) {
    const std::string name = uniqueMutexName();
    ClassNameProbe probe;
    ASSERT_TRUE(singleinstance::native::createMutex(name).has_value());
    EXPECT_TRUE(ensureSingleInstance(probe.source(), name));
    EXPECT_EQ(probe.reads, 1);
}

TEST(SingleInstance, QuitWithNoRunningInstanceCreatesNoMutex) {
    const std::string name = uniqueMutexName();
    ClassNameProbe probe;
    quitRunningInstance(probe.source(), name);
    EXPECT_EQ(probe.reads, 0);
    EXPECT_FALSE(singleinstance::native::openMutex(name).has_value());
}

TEST(SingleInstance, QuitWithARunningInstanceLooksForItsWindow) {
    const std::string name = uniqueMutexName();
    ClassNameProbe probe;
    ASSERT_TRUE(singleinstance::native::createMutex(name).has_value());
    quitRunningInstance(probe.source(), name);
    EXPECT_EQ(probe.reads, 1);
}

TEST(SingleInstance, MutexThatCannotBeMadeFailsWithCVCP006001) {
    // A name below a namespace or folder that doesn't exist can't be created on either system.
    ClassNameProbe probe;
    const int language = panelMessages.language;
    panelMessages.setLanguage(English);
    try {
        ensureSingleInstance(probe.source(), "no/such\\folder" + uniqueMutexName());
        FAIL() << "no exception";
    } catch (const BasicException& failure) {
        EXPECT_STREQ(failure.what(), "Failed to run Control Panel");
    }
    panelMessages.setLanguage(language);
}
