#include "panel/menu_imp.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "core/server_command.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"
#include "panel/tray_tip.h"
#include "tests/support/panel/counting_command.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/live_window.h"
#include "tests/support/panel/recording_menu.h"

namespace {

MenuItem item(const char* text, std::int32_t id) {
    return MenuItem{text, std::make_shared<CountingCommand>(id)};
}

std::vector<std::int32_t> ids(const MenuImp& menu) {
    std::vector<std::int32_t> result;
    for (const MenuItem& each : menu.items()) {
        result.push_back(each.id());
    }
    return result;
}

std::vector<std::int32_t> entryIds(const RecordingMenu& menu) {
    std::vector<std::int32_t> result;
    for (const RecordingMenu::Entry& each : menu.entries()) {
        result.push_back(each.id);
    }
    return result;
}

struct MenuImpTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }

    RecordingMenu menu{"CVCP-001001"};
};

TEST_F(MenuImpTest, AddItemAppendsToTheModelAndTheNativeMenuWithTheCatalogueWords) {
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-003002", 6));
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 6}));
    ASSERT_EQ(menu.entries().size(), 2u);
    EXPECT_EQ(menu.entries()[0].text, "Control panel");
    EXPECT_EQ(menu.entries()[1].text, "Exit");
}

TEST_F(MenuImpTest, TheNoticeJoinsTheTooltipAtTheNextRefreshAndLeavesItWhenCleared) {
    menu.addItem(item("CVCP-003001", 4));
    menu.updateTexts();
    const std::string plain = menu.trayTip();
    menu.setNotice("port 8888 is held");
    EXPECT_EQ(menu.trayTip(), plain);
    menu.updateTexts();
    EXPECT_EQ(menu.trayTip(), trayTipText("CVCP-001001") + "\nport 8888 is held");
    menu.setNotice("");
    menu.updateTexts();
    EXPECT_EQ(menu.trayTip(), trayTipText("CVCP-001001"));
    EXPECT_TRUE(menu.balloons().empty());
}

TEST_F(MenuImpTest, AnAnnouncementIsOneBalloon) {
    menu.announce("the server failed");
    EXPECT_EQ(menu.balloons(), (std::vector<std::string>{"the server failed"}));
}

TEST_F(MenuImpTest, TwoItemsWithTheSameIdAreBothAddedAndTheFirstIsFoundAndRun) {
    const auto first = std::make_shared<CountingCommand>(4);
    const auto second = std::make_shared<CountingCommand>(4);
    menu.addItem(MenuItem{"CVCP-003001", first});
    menu.addItem(MenuItem{"CVCP-003002", second});
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 4}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 4}));
    EXPECT_EQ(menu.find(4).text, "CVCP-003001");
    EXPECT_TRUE(menu.execute(4));
    EXPECT_EQ(first->runs, 1);
    EXPECT_EQ(second->runs, 0);
}

TEST_F(MenuImpTest, RemoveItemRemovesEveryItemWithTheId) {
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-003002", 6));
    menu.addItem(item("CVCP-003001", 4));
    menu.removeItem(4);
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{6}));
    EXPECT_EQ(menu.calls().back(), "deleteEntry 4");
}

TEST_F(MenuImpTest, FindOfAnAbsentIdFailsWithMenuItemNotFound) {
    menu.addItem(item("CVCP-003001", 4));
    expectFailure<std::logic_error>([&] { menu.find(6); }, "menu item not found");
}

TEST_F(MenuImpTest, FindGivesACopy) {
    menu.addItem(item("CVCP-003001", 4));
    MenuItem copy = menu.find(4);
    copy.text = "changed";
    EXPECT_EQ(menu.find(4).text, "CVCP-003001");
}

TEST_F(MenuImpTest, AnItemWithAnUnknownCatalogueIdFailsBeforeTheMenuChanges) {
    expectFailure<std::out_of_range>([&] { menu.addItem(item("CVCP-999999", 4)); },
                                     "invalid map<K, T> key");
    EXPECT_TRUE(menu.items().empty());
    EXPECT_TRUE(menu.entries().empty());
}

TEST_F(MenuImpTest, AnItemWithoutACommandHasNoIdAndIsRefused) {
    expectFailure<std::invalid_argument>(
        [&] {
            menu.addItem(MenuItem{"CVCP-003001", nullptr});
        },
        "invalid command id");
    expectFailure<std::invalid_argument>(
        [&] {
            menu.insertAt(MenuItem{"CVCP-003001", nullptr}, 0);
        },
        "invalid command id");
    EXPECT_TRUE(menu.items().empty());
}

TEST_F(MenuImpTest, InsertAtPutsTheItemAtTheIndexInTheModelOnly) {
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-003002", 6));
    menu.insertAt(item("CVCP-000001", 1), 1);
    menu.insertAt(item("CVCP-000002", 2), 0);
    menu.insertAt(item("CVCP-000002", 3), 99);
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{2, 4, 1, 6, 3}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 6}));
}

TEST_F(MenuImpTest, InsertAtAddsADuplicateLikeAnyOtherItem) {
    menu.addItem(item("CVCP-003001", 4));
    menu.insertAt(item("CVCP-003002", 4), 0);
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 4}));
    EXPECT_EQ(menu.find(4).text, "CVCP-003002");
}

TEST_F(MenuImpTest, ReplaceItemKeepsThePlaceAndGivesTheNativeEntryTheRawId) {
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-000001", 1));
    menu.addItem(item("CVCP-003002", 6));
    menu.replaceItem(1, item("CVCP-000002", 2));
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 2, 6}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 2, 6}));
    EXPECT_EQ(menu.entries()[1].text, "CVCP-000002");
    EXPECT_EQ(menu.calls().back(), "modifyEntry 1 2 CVCP-000002");
}

TEST_F(MenuImpTest, ReplaceItemRemovesEveryItemWithTheOldId) {
    menu.addItem(item("CVCP-000001", 1));
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-000001", 1));
    menu.replaceItem(1, item("CVCP-000002", 2));
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{2, 4}));
}

TEST_F(MenuImpTest, ReplaceItemOfAnAbsentIdAddsToTheModelOnly) {
    menu.addItem(item("CVCP-003001", 4));
    menu.replaceItem(1, item("CVCP-000002", 2));
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 2}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4}));
}

TEST_F(MenuImpTest, ExecuteRunsTheItemsCommand) {
    const auto exit = std::make_shared<CountingCommand>(6);
    menu.addItem(MenuItem{"CVCP-003002", exit});
    EXPECT_TRUE(menu.execute(6));
    EXPECT_EQ(exit->runs, 1);
}

TEST_F(MenuImpTest, ExecuteOfAnAbsentIdAnswersFalse) {
    menu.addItem(item("CVCP-003002", 6));
    EXPECT_FALSE(menu.execute(4));
}

TEST_F(MenuImpTest, ExecuteSwallowsAFailureOfTheCommand) {
    const auto failing =
        std::make_shared<CountingCommand>(3, [] { throw std::runtime_error("no logs"); });
    menu.addItem(MenuItem{"CVCP-004002", failing});
    EXPECT_FALSE(menu.execute(3));
    EXPECT_EQ(failing->runs, 1);
}

TEST_F(MenuImpTest, EnableItemOfAnIdThatTheMenuLacksIsIgnored) {
    menu.addItem(item("CVCP-000001", 1));
    menu.enableItem(2, false);
    menu.enableItem(1, false);
    EXPECT_FALSE(menu.entry(1)->enabled);
    EXPECT_EQ(menu.entry(2), nullptr);
}

TEST_F(MenuImpTest, UpdateTextsRewritesEveryEntryInTheLanguageInForce) {
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-003002", 6));
    panelMessages.setLanguage(Language::Russian);
    menu.updateTexts();
    EXPECT_EQ(cp1251ToUtf8(menu.entries()[0].text), "Панель управления");
    EXPECT_EQ(cp1251ToUtf8(menu.entries()[1].text), "Выход");
}

TEST_F(MenuImpTest, UpdateTextsRefreshesTheTrayIconOncePerItem) {
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-003002", 6));
    menu.updateTexts();
    const std::vector<std::string> expected = {"modifyEntry 4 4 Control panel", "refreshTrayIcon",
                                               "modifyEntry 6 6 Exit", "refreshTrayIcon"};
    EXPECT_EQ(std::vector<std::string>(menu.calls().end() - 4, menu.calls().end()), expected);
}

TEST_F(MenuImpTest, AfterAChangeOfLanguageTheTooltipShowsTheNewTitleAtOnce) {
    menu.addItem(item("CVCP-003001", 4));
    panelMessages.setLanguage(Language::Ukrainian);
    menu.updateTexts();
    EXPECT_EQ(menu.trayTip(), trayTipText("CVCP-001001"));
    EXPECT_EQ(cp1251ToUtf8(menu.trayTip()).rfind("Панель управління Corvanite ", 0), 0u)
        << cp1251ToUtf8(menu.trayTip());
}

TEST_F(MenuImpTest, UpdateOfAnEmptyMenuDoesNothing) {
    menu.update();
    EXPECT_TRUE(menu.items().empty());
    EXPECT_TRUE(menu.calls().empty());
}

// Keeping Run or Stop right at each tick, over the server double.

struct MenuUpdateTest : testing::Test {
    void SetUp() override { menu.setServerCommands(makeServerCommand); }

    PanelLiveWindow panel;
    RecordingMenu menu{"CVCP-001001"};
};

TEST_F(MenuUpdateTest, AStoppedServersPlaceHoldsRunAndShowsStopAfterTheServerIsUp) {
    panel.makeHost();
    getHost()->stopServer();
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(MenuItem{"CVCP-000001", makeServerCommand(1)});
    menu.addItem(item("CVCP-003002", 6));
    menu.update();
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 1, 6}));
    getHost()->startServer();
    ASSERT_TRUE(panel.waitForServer(true));
    menu.update();
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 2, 6}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 2, 6}));
    EXPECT_EQ(menu.entries()[1].text, "Stop");
    EXPECT_EQ(menu.find(2).command->id, 2);
    getHost()->stopServer();
    menu.update();
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 1, 6}));
    EXPECT_EQ(menu.entries()[1].text, "Run");
}

TEST_F(MenuUpdateTest, AMenuWithNeitherRunNorStopGetsTheItemInTheModelOnly) {
    panel.makeHost();
    ASSERT_TRUE(panel.waitForServer(true));
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(item("CVCP-003002", 6));
    menu.update();
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 6, 2}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 6}));
    const std::size_t calls = menu.calls().size();
    menu.update();
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 6, 2}));
    EXPECT_EQ(entryIds(menu), (std::vector<std::int32_t>{4, 6}));
    // The second tick only rewrites the texts, the model's own item among them.
    EXPECT_EQ(std::vector<std::string>(menu.calls().begin() + static_cast<std::ptrdiff_t>(calls),
                                       menu.calls().end()),
              (std::vector<std::string>{"modifyEntry 4 4 Control panel", "refreshTrayIcon",
                                        "modifyEntry 6 6 Exit", "refreshTrayIcon",
                                        "modifyEntry 2 2 Stop", "refreshTrayIcon"}));
}

TEST_F(MenuUpdateTest, ARunningServersMenuIsLeftAsItIsAndItsTextsRewritten) {
    panel.makeHost();
    ASSERT_TRUE(panel.waitForServer(true));
    menu.addItem(MenuItem{"CVCP-000002", makeServerCommand(2)});
    panelMessages.setLanguage(Language::Russian);
    menu.update();
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{2}));
    EXPECT_EQ(cp1251ToUtf8(menu.entries()[0].text), "Остановить");
}

// The tick hands over what its status refresh saw; the menu doesn't ask the system again.
TEST_F(MenuUpdateTest, UpdateWithTheRefreshsAnswerSwapsByThatAnswerAlone) {
    panel.makeHost();
    getHost()->stopServer();
    menu.addItem(item("CVCP-003001", 4));
    menu.addItem(MenuItem{"CVCP-000001", makeServerCommand(1)});
    // No server runs: only the answer given can put Stop in Run's place.
    ASSERT_FALSE(isServerRunning());
    menu.update(true);
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 2}));
    EXPECT_EQ(menu.entries()[1].text, "Stop");
    menu.update(false);
    EXPECT_EQ(ids(menu), (std::vector<std::int32_t>{4, 1}));
    EXPECT_EQ(menu.entries()[1].text, "Run");
}

} // namespace
