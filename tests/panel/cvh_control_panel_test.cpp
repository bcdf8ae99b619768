#include <algorithm>
#include <chrono>
#include <fstream>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"
#include "panel/app_data_manager.h"
#include "panel/window_imp.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/host/model_system.h"
#include "tests/support/panel/layout_documents.h"
#include "tests/support/panel/live_window.h"

// The layout file that ships with the program, CVHControlPanel.json: what the program requires of
// it, and the whole panel built from it running over the server double.

namespace {

using namespace std::chrono_literals;

const char* const languages[] = {"Russian", "English", "Ukrainian"};

TEST(CvhControlPanelFileTest, TheWindowRecordNamesTheClassTheTitleAndTheTimer) {
    const utils::AppDataManager layout(treeLayoutPath(), DisplayScale{});
    const WindowRecord window = layout.window();
    EXPECT_EQ(window.title, "CVCP-001001");
    EXPECT_EQ(window.className, "CVHControlPanel");
    EXPECT_EQ(window.updateTime, 1000);
    EXPECT_GT(window.size.first, 0);
    EXPECT_GT(window.size.second, 0);
}

struct Required {
    std::int32_t id;
    WidgetKind kind;
    std::int32_t commandId;
    std::string text;
};

// Every widget of the file with its kind, command id and text, read with the layout's readers.
std::map<std::int32_t, Required> widgetsOf(const utils::AppDataManager& layout) {
    std::map<std::int32_t, Required> found;
    const auto enter = [&found](std::int32_t id, WidgetKind kind, std::int32_t command,
                                const std::string& text) {
        EXPECT_TRUE(found.emplace(id, Required{id, kind, command, text}).second)
            << "id " << id << " twice";
    };
    for (const TabpanelRecord& record : layout.tabpanels()) {
        enter(record.id, WidgetKind::Tabpanel, 0, record.disposition.text);
    }
    for (const ComboboxRecord& record : layout.comboboxes()) {
        enter(record.id, WidgetKind::Combobox, record.commandId, record.disposition.text);
    }
    for (const ButtonRecord& record : layout.checkboxes()) {
        enter(record.id, WidgetKind::Checkbox, record.commandId, record.disposition.text);
    }
    for (const ButtonRecord& record : layout.syslinks()) {
        enter(record.id, WidgetKind::Syslink, record.commandId, record.disposition.text);
    }
    for (const ButtonRecord& record : layout.buttons()) {
        enter(record.id, WidgetKind::Button, record.commandId, record.disposition.text);
    }
    for (const LabelRecord& record : layout.labels()) {
        enter(record.id, WidgetKind::Label, 0, record.disposition.text);
    }
    return found;
}

struct CvhControlPanelTest : testing::Test {
    PanelLiveWindow panel;
};

TEST_F(CvhControlPanelTest, HoldsEveryWidgetThatTheProgramAddresses) {
    panel.makeHost();
    const utils::AppDataManager layout(treeLayoutPath(), DisplayScale{});
    const std::map<std::int32_t, Required> widgets = widgetsOf(layout);
    // Texts of the host's facts resolve to an empty catalogue id.
    const Required required[] = {
        {2, WidgetKind::Syslink, 12, ""},
        {3, WidgetKind::Label, 0, ""},
        {4, WidgetKind::Label, 0, ""},
        {7, WidgetKind::Button, 1, "CVCP-000001"},
        {8, WidgetKind::Button, 2, "CVCP-000002"},
        {9, WidgetKind::Tabpanel, 0, ""},
        {12, WidgetKind::Combobox, 0, ""},
        {13, WidgetKind::Combobox, 9, ""},
        {14, WidgetKind::Checkbox, 13, "CVCP-005401"},
        {15, WidgetKind::Checkbox, 14, "CVCP-005402"},
    };
    for (const Required& each : required) {
        const auto found = widgets.find(each.id);
        ASSERT_NE(found, widgets.end()) << each.id;
        EXPECT_EQ(found->second.kind, each.kind) << each.id;
        EXPECT_EQ(found->second.commandId, each.commandId) << each.id;
        EXPECT_EQ(found->second.text, each.text) << each.id;
    }
    EXPECT_EQ(layout.tabpanels().at(0).tabs,
              (std::vector<std::string>{"CVCP-002001", "CVCP-002002"}));
    for (const ComboboxRecord& box : layout.comboboxes()) {
        if (box.id == 12) {
            EXPECT_EQ(box.values,
                      (std::vector<std::string>{"CVCP-005101", "CVCP-005102", "CVCP-005103"}));
        } else if (box.id == 13) {
            EXPECT_EQ(box.values,
                      (std::vector<std::string>{"CVCP-005201", "CVCP-005202", "CVCP-005203"}));
        }
    }
}

TEST_F(CvhControlPanelTest, TheRawTextsOfTheFactWidgetsAreTheirKeys) {
    const nlohmann::json document =
        nlohmann::json::parse(std::ifstream(nativePath(treeLayoutPath())));
    std::map<std::int32_t, std::string> texts;
    for (const auto& [kind, widgets] : document.at("widgets").items()) {
        for (const nlohmann::json& widget : widgets) {
            texts[widget.at("id").get<std::int32_t>()] = widget.value("text", "");
        }
    }
    EXPECT_EQ(texts.at(2), "address");
    EXPECT_EQ(texts.at(3), "status");
    EXPECT_EQ(texts.at(4), "time");
    std::set<std::string> all;
    for (const auto& [id, text] : texts) {
        all.insert(text);
    }
    for (const char* key : {"app_version", "lib_version"}) {
        EXPECT_EQ(all.count(key), 1u) << key;
    }
}

TEST_F(CvhControlPanelTest, HoldsTheOtherLabelsButtonsAndLinksWithTheirCommands) {
    panel.makeHost();
    const utils::AppDataManager layout(treeLayoutPath(), DisplayScale{});
    std::map<std::string, std::pair<WidgetKind, std::int32_t>> byText;
    for (const auto& [id, widget] : widgetsOf(layout)) {
        if (!widget.text.empty()) {
            byText[widget.text] = {widget.kind, widget.commandId};
        }
    }
    const std::map<std::string, std::pair<WidgetKind, std::int32_t>> expected = {
        {"CVCP-004001", {WidgetKind::Button, 5}},   {"CVCP-004002", {WidgetKind::Button, 3}},
        {"CVCP-004101", {WidgetKind::Syslink, 10}}, {"CVCP-004102", {WidgetKind::Syslink, 11}},
        {"CVCP-005001", {WidgetKind::Label, 0}},    {"CVCP-005002", {WidgetKind::Label, 0}},
        {"CVCP-005003", {WidgetKind::Label, 0}},    {"CVCP-005004", {WidgetKind::Label, 0}},
        {"CVCP-005005", {WidgetKind::Label, 0}},    {"CVCP-005006", {WidgetKind::Label, 0}},
        {"CVCP-005007", {WidgetKind::Label, 0}},    {"CVCP-005008", {WidgetKind::Label, 0}},
        {"CVCP-005009", {WidgetKind::Label, 0}},
    };
    for (const auto& [text, kindAndCommand] : expected) {
        const auto found = byText.find(text);
        ASSERT_NE(found, byText.end()) << text;
        EXPECT_EQ(found->second, kindAndCommand) << text;
    }
}

TEST_F(CvhControlPanelTest, TheMenuHoldsControlPanelRunStopAndExitInThisOrder) {
    const nlohmann::json document =
        nlohmann::json::parse(std::ifstream(nativePath(treeLayoutPath())));
    std::vector<std::pair<std::int32_t, std::string>> items;
    for (const nlohmann::json& item : document.at("menu").at("items")) {
        items.emplace_back(item.at("commandId").get<std::int32_t>(), item.at("text"));
    }
    EXPECT_EQ(items,
              (std::vector<std::pair<std::int32_t, std::string>>{
                  {4, "CVCP-003001"}, {1, "CVCP-000001"}, {2, "CVCP-000002"}, {6, "CVCP-003002"}}));
}

TEST_F(CvhControlPanelTest, EveryCatalogueIdOfTheFileHasWordsInEveryLanguage) {
    panel.makeHost();
    for (int language = 0; language < 3; ++language) {
        panelMessages.setLanguage(language);
        const utils::AppDataManager layout(treeLayoutPath(), DisplayScale{});
        EXPECT_NO_THROW(panelMessages.text(layout.window().title.c_str())) << languages[language];
        for (const MenuItemRecord& item : layout.menuItems()) {
            EXPECT_NO_THROW(panelMessages.text(item.text.c_str())) << item.text;
        }
        for (const TabpanelRecord& record : layout.tabpanels()) {
            for (const std::string& tab : record.tabs) {
                EXPECT_NO_THROW(panelMessages.text(tab.c_str())) << tab;
            }
        }
        for (const ComboboxRecord& record : layout.comboboxes()) {
            for (const std::string& value : record.values) {
                EXPECT_NO_THROW(panelMessages.text(value.c_str())) << value;
            }
        }
        EXPECT_NO_THROW(layout.buttons());
        EXPECT_NO_THROW(layout.labels());
        EXPECT_NO_THROW(layout.syslinks());
        EXPECT_NO_THROW(layout.checkboxes());
    }
}

// Tidy at the design unit: every widget lies inside the window's client area, the tabbed ones
// inside the tab panel, and no two visible together overlap. A combo box's own height counts
// as one line: the rest is its drop-down list.
TEST_F(CvhControlPanelTest, WidgetsLieInsideTheWindowAndDontOverlap) {
    panel.makeHost();
    const utils::AppDataManager layout(treeLayoutPath(), DisplayScale{});
    struct Box {
        std::int32_t id, tab, left, top, right, bottom;
    };
    std::vector<Box> boxes;
    const auto add = [&boxes](std::int32_t id, const WidgetDisposition& d, bool combobox) {
        const std::int32_t height = combobox ? 24 : d.size.second;
        boxes.push_back({id, d.tabIndex, d.position.first, d.position.second,
                         d.position.first + d.size.first, d.position.second + height});
    };
    for (const auto& r : layout.comboboxes())
        add(r.id, r.disposition, true);
    for (const auto& r : layout.checkboxes())
        add(r.id, r.disposition, false);
    for (const auto& r : layout.syslinks())
        add(r.id, r.disposition, false);
    for (const auto& r : layout.buttons())
        add(r.id, r.disposition, false);
    for (const auto& r : layout.labels())
        add(r.id, r.disposition, false);
    const TabpanelRecord tabs = layout.tabpanels().at(0);
    const PixelPair window = layout.window().size;
    // The client area of a fixed window with caption and frame at 96 dots per inch.
    const std::int32_t clientWidth = window.first - 16;
    const std::int32_t clientHeight = window.second - 39;
    for (const Box& box : boxes) {
        EXPECT_GE(box.left, 0) << box.id;
        EXPECT_GE(box.top, 0) << box.id;
        EXPECT_LE(box.right, clientWidth) << box.id;
        EXPECT_LE(box.bottom, clientHeight) << box.id;
        if (box.tab != -1) {
            EXPECT_GE(box.left, tabs.disposition.position.first + 4) << box.id;
            EXPECT_GE(box.top, tabs.disposition.position.second + 26) << box.id;
            EXPECT_LE(box.right, tabs.disposition.position.first + tabs.disposition.size.first - 4)
                << box.id;
            EXPECT_LE(box.bottom,
                      tabs.disposition.position.second + tabs.disposition.size.second - 4)
                << box.id;
        }
    }
    for (std::size_t a = 0; a < boxes.size(); ++a) {
        for (std::size_t b = a + 1; b < boxes.size(); ++b) {
            const Box& one = boxes[a];
            const Box& other = boxes[b];
            const bool together = one.tab == -1 || other.tab == -1 || one.tab == other.tab;
            const bool overlap = one.left < other.right && other.left < one.right &&
                                 one.top < other.bottom && other.top < one.bottom;
            EXPECT_FALSE(together && overlap) << one.id << " and " << other.id;
        }
    }
}

TEST_F(CvhControlPanelTest, BuildsTheWholeModel) {
    panel.makeHost();
    panel.build();
    RecordingWindow& window = panel.window();
    EXPECT_EQ(window.caption(), "Corvanite Control Panel");
    EXPECT_EQ(window.widgets().front().id, 9);
    EXPECT_EQ(window.widgets().size(),
              widgetsOf(utils::AppDataManager(treeLayoutPath(), DisplayScale{})).size());
    const std::vector<RecordingMenu::Entry>& entries = panel.menu()->entries();
    ASSERT_EQ(entries.size(), 3u);
    EXPECT_EQ(entries[0].text, "Control panel");
    EXPECT_EQ(entries[1].id, 2);
    EXPECT_EQ(entries[1].text, "Stop");
    EXPECT_EQ(entries[2].text, "Exit");
    EXPECT_EQ(panel.widget(12)->selectedIndex(), Language::English);
    EXPECT_EQ(panel.widget(13)->selectedIndex(), 1); // the installation logs at "info"
    EXPECT_EQ(panel.widget(5)->shown(), versionTail(fileVersionText()));
    EXPECT_EQ(panel.widget(6)->shown(), libraryVersion());
    window.changeTab();
    EXPECT_TRUE(panel.widget(7)->visible());
    EXPECT_FALSE(panel.widget(12)->visible());
    EXPECT_TRUE(panel.widget(11)->visible());
}

// Every catalogue text of the window, the menu and the tray in the language in force.
void expectCatalogueTexts(PanelLiveWindow& panel) {
    RecordingWindow& window = panel.window();
    EXPECT_EQ(window.caption(), panelMessages.text(window.title().c_str()));
    for (const WidgetEntry& entry : window.widgets()) {
        const auto widget = window.recorded(entry.id);
        if (!widget->text().empty()) {
            EXPECT_EQ(widget->shown(), panelMessages.text(widget->text().c_str())) << entry.id;
        }
        for (std::size_t i = 0; i < widget->entries().size(); ++i) {
            EXPECT_EQ(widget->entryTexts().at(i), panelMessages.text(widget->entries()[i].c_str()))
                << entry.id;
        }
    }
    const auto menu = panel.menu();
    auto entry = menu->entries().begin();
    for (const MenuItem& item : menu->items()) {
        if (entry == menu->entries().end()) {
            break;
        }
        EXPECT_EQ(entry->text, panelMessages.text(item.text.c_str())) << item.id();
        ++entry;
    }
}

TEST_F(CvhControlPanelTest, TwentyTicksFollowTheServerRestartItOnceAndFollowTheLanguage) {
    panel.makeHost();
    // The language goes to the registry, which the test processes of one system share.
    const HostModelRegistryLock registry;
    panel.build();
    ASSERT_TRUE(panel.waitForServer(true));
    int ticks = 0;
    const auto tick = [&] {
        ++ticks;
        const bool running = panel.tick();
        std::this_thread::sleep_for(200ms);
        return running;
    };
    const auto expectButtons = [&](bool running) {
        EXPECT_EQ(panel.widget(7)->isEnabled(), !running) << "tick " << ticks;
        EXPECT_EQ(panel.widget(8)->isEnabled(), running) << "tick " << ticks;
        ASSERT_EQ(panel.menu()->entries().size(), 3u);
        EXPECT_EQ(panel.menu()->entries()[1].id, running ? 2 : 1) << "tick " << ticks;
    };

    // 1-3: the server runs.
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(tick());
        expectButtons(true);
    }
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    const std::uint32_t first = panel.serverPid();

    // 4: killed from outside; the tick sees it stopped and starts it again.
    panel.killServer();
    EXPECT_FALSE(tick());
    EXPECT_EQ(panel.widget(3)->shown(), "Stopped");
    EXPECT_FALSE(panel.widget(8)->isEnabled());
    ASSERT_TRUE(panel.waitForServer(true));
    const std::uint32_t second = panel.serverPid();
    EXPECT_NE(second, first);

    // 5-8: up again, started once.
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(tick());
        expectButtons(true);
        EXPECT_EQ(panel.serverPid(), second);
    }

    // A change to Russian rewrites every catalogue text at once; 9 rewrites the state.
    panel.window().changeLanguage(Language::Russian);
    expectCatalogueTexts(panel);
    EXPECT_EQ(cp1251ToUtf8(panel.window().caption()), "Панель управления Corvanite");
    EXPECT_TRUE(tick());
    EXPECT_EQ(cp1251ToUtf8(panel.widget(3)->shown()), "Запущен");
    EXPECT_EQ(cp1251ToUtf8(panel.menu()->entries()[1].text), "Остановить");

    // Stop by the user, who finds it enabled: the restart's operation is over, not merely its
    // server up; 10-13: stopped, and nobody starts it again.
    ASSERT_TRUE(panel.waitUntilIdle());
    EXPECT_TRUE(panel.window().runCommand(2));
    ASSERT_TRUE(panel.waitUntilIdle());
    for (int i = 0; i < 4; ++i) {
        EXPECT_FALSE(tick());
        expectButtons(false);
    }
    EXPECT_EQ(cp1251ToUtf8(panel.widget(3)->shown()), "Остановлен");
    EXPECT_EQ(panel.widget(2)->shown(), "-");
    EXPECT_EQ(panel.serverPid(), 0u);
    EXPECT_FALSE(isServerRunning());

    // Run from the tray; 14-17: running again.
    EXPECT_TRUE(panel.window().runCommand(1));
    ASSERT_TRUE(panel.waitUntilIdle());
    ASSERT_TRUE(panel.waitForServer(true));
    const std::uint32_t third = panel.serverPid();
    for (int i = 0; i < 4; ++i) {
        EXPECT_TRUE(tick());
        expectButtons(true);
    }

    // Back to English; 18-20.
    panel.window().changeLanguage(Language::English);
    expectCatalogueTexts(panel);
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(tick());
        expectButtons(true);
        EXPECT_EQ(panel.serverPid(), third);
    }
    EXPECT_EQ(ticks, 20);
    EXPECT_EQ(panel.widget(3)->shown(), "Running");
    EXPECT_EQ(panel.widget(2)->shown(),
              "<a>" + ServiceDomain + ":" + std::to_string(panel.port) + "</a>");
    EXPECT_EQ(panel.menu()->entries()[1].text, "Stop");
    for (const HostModelBox& box : panel.boxes.boxes()) {
        ADD_FAILURE() << "a box: " << utf16ToUtf8(box.text);
    }
}

} // namespace
