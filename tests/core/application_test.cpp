#include "core/application.h"

#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "panel/command_table.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/layout_documents.h"
#include "tests/support/panel/recording_application.h"

using nlohmann::json;

namespace {

// The small layout without the tray items of the host's commands, so that building it asks
// nothing of the host.
json hostFreeDocument() {
    json document = smallLayoutDocument();
    document["menu"]["items"] = {{{"commandId", 4}, {"text", "CVCP-003001"}},
                                 {{"commandId", 6}, {"text", "CVCP-003002"}}};
    return document;
}

struct ApplicationTest : testing::Test {
    void SetUp() override {
        panelMessages.setLanguage(Language::English);
        setMessageBoxSink([this](const std::wstring&, const std::wstring& text, unsigned) {
            boxes.push_back(text);
        });
    }
    void TearDown() override { setMessageBoxSink(nullptr); }

    std::unique_ptr<RecordingApplication> build(const json& document,
                                                RecordingWindow::Options options = {}) {
        layout = std::make_unique<utils::AppDataManager>(writeLayoutFile(folder, document.dump()),
                                                         DisplayScale{});
        return std::make_unique<RecordingApplication>(makeRecordingWindow(*layout, options),
                                                      *layout);
    }

    TempFolder folder;
    std::unique_ptr<utils::AppDataManager> layout;
    std::vector<std::wstring> boxes;
};

TEST_F(ApplicationTest, BuildsTheWindowThenTheWidgetsInTheFixedOrderThenTheMenu) {
    const auto application = build(hostFreeDocument());
    EXPECT_EQ(
        application->recordingWindow().calls(),
        (std::vector<std::string>{"create", "addTabpanel 9", "addCombobox 21", "addCheckbox 22",
                                  "addSyslink 23", "addButton 24", "addLabel 25", "createMenu"}));
    const auto menu = application->recordingWindow().recordedMenu();
    ASSERT_NE(menu, nullptr);
    ASSERT_EQ(menu->entries().size(), 2u);
    EXPECT_EQ(menu->entries()[0].text, "Control panel");
    EXPECT_EQ(menu->entries()[1].text, "Exit");
}

TEST_F(ApplicationTest, TheWindowIsCreatedHidden) {
    const auto application = build(hostFreeDocument());
    EXPECT_FALSE(application->recordingWindow().isVisible());
}

TEST_F(ApplicationTest, EachWidgetGetsTheCommandOfItsCommandId) {
    const auto application = build(hostFreeDocument());
    RecordingWindow& window = application->recordingWindow();
    window.widget(23)->execute(); // link, commandid::showWindow
    EXPECT_TRUE(window.isVisible());
    window.widget(24)->execute(); // button, commandid::hideWindow
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(window.widget(22)->commandId(), 14);
    EXPECT_EQ(window.widget(21)->command(), nullptr);
    EXPECT_EQ(window.widget(9)->command(), nullptr);
    EXPECT_EQ(window.widget(25)->command(), nullptr);
}

TEST_F(ApplicationTest, ExitQuitsTheApplication) {
    const auto application = build(hostFreeDocument());
    EXPECT_TRUE(application->recordingWindow().menu()->execute(6));
    EXPECT_EQ(application->quits(), 1);
    EXPECT_TRUE(application->recordingWindow().destroyed());
}

TEST_F(ApplicationTest, ALabelCantShadowAButtonOfTheSameIdButAButtonShadowsALabel) {
    json document = hostFreeDocument();
    document["widgets"]["labels"][0]["id"] = 24;
    const auto application = build(document);
    EXPECT_EQ(application->recordingWindow().widget(24)->kind(), WidgetKind::Button);
}

TEST_F(ApplicationTest, ATabPanelShadowsEveryLaterWidgetOfTheSameId) {
    json document = hostFreeDocument();
    document["widgets"]["buttons"][0]["id"] = 9;
    const auto application = build(document);
    EXPECT_EQ(application->recordingWindow().widget(9)->kind(), WidgetKind::Tabpanel);
}

TEST_F(ApplicationTest, AFileWithoutSyslinksBuildsAWindowWithoutLinks) {
    json document = hostFreeDocument();
    document["widgets"].erase("syslinks");
    const auto application = build(document);
    RecordingWindow& window = application->recordingWindow();
    for (const WidgetEntry& entry : window.widgets()) {
        EXPECT_NE(entry.widget->kind(), WidgetKind::Syslink);
    }
    expectFailure<std::logic_error>([&] { window.widget(2); }, "widget is not found");
}

TEST_F(ApplicationTest, AWidgetWithARefusedCommandIdFailsTheBuild) {
    for (std::int32_t id : {7, 15, -1, 100}) {
        json document = hostFreeDocument();
        document["widgets"]["buttons"][0]["commandId"] = id;
        expectFailure<std::invalid_argument>([&] { build(document); }, "invalid command id");
    }
}

TEST_F(ApplicationTest, AWidgetWithCommandEightFailsTheBuild) {
    json document = hostFreeDocument();
    document["widgets"]["checkboxs"][0]["commandId"] = 8;
    expectFailure<std::logic_error>([&] { build(document); }, "unknown server command id");
}

TEST_F(ApplicationTest, AButtonWithCommandZeroFailsTheBuild) {
    json document = hostFreeDocument();
    document["widgets"]["buttons"][0]["commandId"] = 0;
    expectFailure<std::invalid_argument>([&] { build(document); }, "invalid command id");
}

TEST_F(ApplicationTest, ATrayMenuWithItemsForFourSixAndSevenShowsTwoItems) {
    json document = hostFreeDocument();
    document["menu"]["items"].push_back({{"commandId", 7}, {"text", "CVCP-003002"}});
    const auto application = build(document);
    const auto menu = application->recordingWindow().recordedMenu();
    EXPECT_EQ(menu->items().size(), 2u);
    EXPECT_EQ(menu->entries().size(), 2u);
}

TEST_F(ApplicationTest, AMenuItemWithCommandEightIsLeftOut) {
    json document = hostFreeDocument();
    const json refused = {{"commandId", 8}, {"text", "CVCP-003003"}};
    document["menu"]["items"].insert(document["menu"]["items"].begin(), refused);
    const auto application = build(document);
    EXPECT_EQ(application->recordingWindow().menu()->items().size(), 2u);
}

TEST_F(ApplicationTest, AnItemWithAnUnknownCatalogueIdIsSkippedWithoutAMessage) {
    json document = hostFreeDocument();
    document["menu"]["items"][0]["text"] = "CVCP-999999";
    const auto application = build(document);
    const auto menu = application->recordingWindow().recordedMenu();
    ASSERT_EQ(menu->items().size(), 1u);
    EXPECT_EQ(menu->items().front().id(), 6);
    EXPECT_EQ(menu->entries().size(), 1u);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ApplicationTest, AnItemWithCommandIdZeroHasNoCommandAndIsSkipped) {
    json document = hostFreeDocument();
    document["menu"]["items"][1]["commandId"] = 0;
    const auto application = build(document);
    const auto menu = application->recordingWindow().recordedMenu();
    ASSERT_EQ(menu->items().size(), 1u);
    EXPECT_EQ(menu->items().front().id(), 4);
    EXPECT_TRUE(boxes.empty());
}

TEST_F(ApplicationTest, AMenuElementThatIsNoObjectFailsTheBuild) {
    json document = hostFreeDocument();
    document["menu"]["items"][0] = 4;
    expectFailure<json::type_error>(
        [&] { build(document); }, "[json.exception.type_error.306] cannot use value() with number");
}

TEST_F(ApplicationTest, WithoutATrayTheProgramGoesOnWithoutMenu) {
    const auto application = build(hostFreeDocument(), RecordingWindow::Options{true, false});
    EXPECT_EQ(application->recordingWindow().menu(), nullptr);
    EXPECT_EQ(application->recordingWindow().widgets().size(), 6u);
}

TEST_F(ApplicationTest, AWindowThatCantBeCreatedFailsBeforeAnyWidget) {
    expectFailure<BasicException>(
        [&] {
            build(hostFreeDocument(), RecordingWindow::Options{false, true});
        },
        "Error creating control panel window");
}

TEST_F(ApplicationTest, RunShowsTheWindowUnlessSilent) {
    auto application = build(hostFreeDocument());
    EXPECT_EQ(application->run("abc--silentxyz"), 0);
    EXPECT_FALSE(application->recordingWindow().isVisible());
    application->run("");
    EXPECT_TRUE(application->recordingWindow().isVisible());
}

// The commands of the layout's ids.

TEST_F(ApplicationTest, MakeCommandOfZeroGivesNoCommandAndNoFailure) {
    const auto application = build(hostFreeDocument());
    EXPECT_EQ(application->makeCommand(0), nullptr);
}

TEST_F(ApplicationTest, MakeCommandOfSevenFifteenAndMinusOneIsRefused) {
    const auto application = build(hostFreeDocument());
    for (std::int32_t id : {7, 15, -1}) {
        expectFailure<std::invalid_argument>([&] { application->makeCommand(id); },
                                             "invalid command id");
    }
}

// An id that the command table hasn't is refused like 7, whatever its number.
TEST_F(ApplicationTest, MakeCommandOfAnIdWithoutARowIsRefused) {
    const auto application = build(hostFreeDocument());
    for (std::int32_t id : {15, 16, 100, -2, std::numeric_limits<std::int32_t>::min(),
                            std::numeric_limits<std::int32_t>::max()}) {
        ASSERT_EQ(commandRoute(id), CommandRoute::refused) << id;
        expectFailure<std::invalid_argument>([&] { application->makeCommand(id); },
                                             "invalid command id");
    }
}

TEST_F(ApplicationTest, MakeCommandOfEightIsAnUnknownServerCommand) {
    const auto application = build(hostFreeDocument());
    expectFailure<std::logic_error>([&] { application->makeCommand(8); },
                                    "unknown server command id");
}

TEST_F(ApplicationTest, TheCommandOfThirteenDoesNothing) {
    const auto application = build(hostFreeDocument());
    const std::vector<std::string> before = application->recordingWindow().calls();
    for (std::int32_t id : {13, 14}) {
        const auto command = application->makeCommand(id);
        ASSERT_NE(command, nullptr);
        EXPECT_EQ(command->id, id);
        EXPECT_NO_THROW(command->execute());
    }
    EXPECT_EQ(application->recordingWindow().calls(), before);
    EXPECT_EQ(application->quits(), 0);
}

TEST_F(ApplicationTest, CommandsFourFiveAndSixShowHideAndQuit) {
    const auto application = build(hostFreeDocument());
    application->makeCommand(4)->execute();
    EXPECT_TRUE(application->recordingWindow().isVisible());
    application->makeCommand(5)->execute();
    EXPECT_FALSE(application->recordingWindow().isVisible());
    application->makeCommand(6)->execute();
    EXPECT_EQ(application->quits(), 1);
}

} // namespace
