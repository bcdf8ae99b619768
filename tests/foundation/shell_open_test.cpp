#include "foundation/shell_open.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace {

// Records what would be handed to the shell while it lives.
class ShellRecorder {
public:
    explicit ShellRecorder(bool accept) {
        setShellOpenSink([this, accept](const std::wstring& target, int show) {
            opened.emplace_back(target, show);
            return accept;
        });
    }
    ~ShellRecorder() { setShellOpenSink(nullptr); }
    std::vector<std::pair<std::wstring, int>> opened;
};

} // namespace

TEST(ShellOpen, PathGetsBackslashes) {
    ShellRecorder recorder(true);
    EXPECT_TRUE(shellOpenPath("C:/a/b"));
    ASSERT_EQ(recorder.opened.size(), 1u);
    EXPECT_EQ(recorder.opened[0].first, L"C:\\a\\b");
    EXPECT_EQ(recorder.opened[0].second, 1);
}

TEST(ShellOpen, RefusalIsFalse) {
    ShellRecorder recorder(false);
    EXPECT_FALSE(shellOpenPath("C:/a"));
}

TEST(ShellOpen, UrlIsOpenedAsItIsWithShowCommandFive) {
    ShellRecorder recorder(true);
    shellOpenUrl(L"https://localhost:8443");
    ASSERT_EQ(recorder.opened.size(), 1u);
    EXPECT_EQ(recorder.opened[0].first, L"https://localhost:8443");
    EXPECT_EQ(recorder.opened[0].second, 5);
}

TEST(ShellOpen, CyrillicPathIsConverted) {
    EXPECT_EQ(shellPathOf("C:/\xD0\x9B\xD0\xBE\xD0\xB3/x"), L"C:\\\u041B\u043E\u0433\\x");
}

TEST(ShellOpen, MissingPathIsRefusedByTheSystem) {
    EXPECT_FALSE(shellOpenPath("C:/corvanite-no-such-folder/" +
                               std::to_string(::testing::UnitTest::GetInstance()->random_seed())));
}
