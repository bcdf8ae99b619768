#include "host/host_options.h"

#include <gtest/gtest.h>

#include <string>

#include "foundation/client_properties.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "tests/support/foundation/settings_file_guard.h"
#include "tests/support/host/model_recorders.h"

namespace {

struct HostOptions : ::testing::Test {
    SettingsFileGuard settings;
    HostModelBoxRecorder recorder;
};

} // namespace

TEST_F(HostOptions, TurningPortAutoselectionOffWarnsAtOnce) {
    setPortAutoselect(false);
    EXPECT_EQ(clientProperties().get("cv_port_autoselect"), "false");
    EXPECT_FALSE(isPortAutoselect());
    const auto boxes = recorder.boxes();
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].caption, L"Corvanite");
    EXPECT_EQ(boxes[0].text, fromCp1251(panelMessages.text("CVCP-006105")));
    EXPECT_EQ(boxes[0].flags, 0x10010u);
}

TEST_F(HostOptions, TurningPortAutoselectionOnAgainDoesNotWarn) {
    setPortAutoselect(false);
    setPortAutoselect(true);
    EXPECT_EQ(clientProperties().get("cv_port_autoselect"), "true");
    EXPECT_TRUE(isPortAutoselect());
    EXPECT_EQ(recorder.boxes().size(), 1u);
}

TEST_F(HostOptions, UncPathsAreStoredWithoutAWord) {
    setUseUncPaths(true);
    EXPECT_EQ(clientProperties().get("cv_use_unc_paths"), "true");
    setUseUncPaths(false);
    EXPECT_EQ(clientProperties().get("cv_use_unc_paths"), "false");
    EXPECT_TRUE(recorder.boxes().empty());
}
