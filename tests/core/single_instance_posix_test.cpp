#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "core/single_instance.h"

#include "tests/support/foundation/temp_folder.h"

namespace {

// The instance lock files of these tests go to a runtime folder of their own, removed at the end.
class RuntimeFolder : public ::testing::Environment {
public:
    void SetUp() override {
        folder_ = std::make_unique<TempFolder>();
        setenv("XDG_RUNTIME_DIR", folder_->path().c_str(), 1);
    }
    void TearDown() override { folder_.reset(); }

private:
    std::unique_ptr<TempFolder> folder_;
};

[[maybe_unused]] auto* const runtimeFolder = ::testing::AddGlobalTestEnvironment(new RuntimeFolder);

} // namespace

TEST(SingleInstancePosix, MutexIsALockFileInTheRuntimeFolder) {
    const std::string folder = std::getenv("XDG_RUNTIME_DIR");
    ASSERT_TRUE(singleinstance::native::createMutex("CVHControlPanelLockTest").has_value());
    EXPECT_TRUE(std::filesystem::exists(folder + "/CVHControlPanelLockTest.lock"));
    EXPECT_TRUE(singleinstance::native::openMutex("CVHControlPanelLockTest").has_value());
}
