#include "panel/window_imp.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "panel/window.h"
#include "tests/support/panel/counting_command.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/recording_window.h"

namespace {

WidgetDisposition onTab(std::int32_t tabIndex) {
    WidgetDisposition disposition;
    disposition.tabIndex = tabIndex;
    return disposition;
}

void addLabel(RecordingWindow& window, std::int32_t id, std::int32_t tabIndex) {
    window.addLabel(LabelRecord{id, onTab(tabIndex)});
}

void addButton(RecordingWindow& window, std::int32_t id, std::int32_t tabIndex,
               std::shared_ptr<Command> command) {
    ButtonRecord record;
    record.id = id;
    record.commandId = command->id;
    record.disposition = onTab(tabIndex);
    record.command = std::move(command);
    window.addButton(record);
}

class WindowImpTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }

    std::shared_ptr<RecordingWindow> window =
        std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{480, 360});
};

TEST_F(WindowImpTest, KeepsTitleAndSizeAndStartsWithoutMenuOrWidgets) {
    EXPECT_EQ(window->title(), "CVCP-001001");
    EXPECT_EQ(window->size(), PixelPair(480, 360));
    EXPECT_EQ(window->menu(), nullptr);
    EXPECT_TRUE(window->widgets().empty());
}

TEST_F(WindowImpTest, WidgetsAreKeptInTheOrderOfAdding) {
    addLabel(*window, 5, 0);
    addLabel(*window, 3, 0);
    ASSERT_EQ(window->widgets().size(), 2u);
    EXPECT_EQ(window->widgets()[0].id, 5);
    EXPECT_EQ(window->widgets()[1].id, 3);
    EXPECT_EQ(window->widget(3), window->widgets()[1].widget);
}

TEST_F(WindowImpTest, LookupOfAnAbsentIdFailsWithWidgetIsNotFound) {
    addLabel(*window, 5, 0);
    expectFailure<std::logic_error>([&] { window->widget(6); }, "widget is not found");
}

TEST_F(WindowImpTest, OfTwoWidgetsWithTheSameIdTheFirstAddedIsFound) {
    const auto command = std::make_shared<CountingCommand>(5);
    addButton(*window, 30, 0, command);
    addLabel(*window, 30, 0);
    EXPECT_EQ(window->widget(30)->kind(), WidgetKind::Button);
    window->widget(30)->execute();
    EXPECT_EQ(command->runs, 1);
}

TEST_F(WindowImpTest, ShowTabHidesAllOtherTabsWidgetsBeforeShowingAny) {
    addLabel(*window, 1, 0);
    addLabel(*window, 2, 1);
    addLabel(*window, 3, 0);
    addLabel(*window, 4, 1);
    window->clearWidgetJournal();
    window->showTab(1);
    EXPECT_EQ(window->widgetJournal(),
              (std::vector<std::string>{"1 setVisible 0", "3 setVisible 0", "2 setVisible 1",
                                        "4 setVisible 1"}));
}

TEST_F(WindowImpTest, ShowTabWithAnIndexWithoutWidgetsHidesEverythingTabbed) {
    addLabel(*window, 1, 0);
    addLabel(*window, 2, 1);
    addLabel(*window, 3, -1);
    window->showTab(7);
    EXPECT_FALSE(window->recorded(1)->visible());
    EXPECT_FALSE(window->recorded(2)->visible());
    EXPECT_TRUE(window->recorded(3)->visible());
}

TEST_F(WindowImpTest, ShowTabMinusOneHidesAllTabbedAndShowsNothing) {
    addLabel(*window, 1, 0);
    addLabel(*window, 2, 1);
    addLabel(*window, 3, -1);
    window->clearWidgetJournal();
    window->showTab(-1);
    EXPECT_EQ(window->widgetJournal(),
              (std::vector<std::string>{"1 setVisible 0", "2 setVisible 0"}));
}

TEST_F(WindowImpTest, AWidgetOnNoTabStaysVisibleOnEveryTab) {
    addLabel(*window, 1, -1);
    addLabel(*window, 2, 0);
    for (std::int32_t tab : {0, 1, -1, 5}) {
        window->showTab(tab);
        EXPECT_TRUE(window->recorded(1)->visible()) << tab;
    }
    EXPECT_TRUE(window->recorded(1)->calls().empty());
}

TEST_F(WindowImpTest, ShowTabComparesTheIndexInSixteenBits) {
    addLabel(*window, 1, 0);
    addLabel(*window, 2, 1);
    addLabel(*window, 3, 65536);
    window->showTab(65536 + 1);
    EXPECT_FALSE(window->recorded(1)->visible());
    EXPECT_TRUE(window->recorded(2)->visible());
    EXPECT_FALSE(window->recorded(3)->visible());
}

TEST_F(WindowImpTest, RefreshTabHidesAndShowsAgainOnlyThatTabsWidgets) {
    addLabel(*window, 1, 0);
    addLabel(*window, 2, 1);
    addLabel(*window, 3, -1);
    window->clearWidgetJournal();
    window->refreshTab(1);
    EXPECT_EQ(window->widgetJournal(),
              (std::vector<std::string>{"2 setVisible 0", "2 setVisible 1"}));
    window->clearWidgetJournal();
    window->refreshTab(-1);
    EXPECT_TRUE(window->widgetJournal().empty());
}

TEST_F(WindowImpTest, ShowMenuAndAddMenuItemWithoutAMenuDoNothingAndRaiseNothing) {
    EXPECT_NO_THROW(window->showMenu());
    EXPECT_NO_THROW(
        window->addMenuItem(MenuItem{"CVCP-003001", std::make_shared<CountingCommand>(4)}));
    EXPECT_EQ(window->menu(), nullptr);
}

TEST_F(WindowImpTest, ShowMenuPopsTheMenuUp) {
    window->createMenu();
    window->showMenu();
    EXPECT_EQ(window->recordedMenu()->popups(), 1);
}

TEST_F(WindowImpTest, ARightClickOnTheIconWhileHiddenShowsTheMenuWithoutTheWindow) {
    window->createMenu();
    window->hide();
    window->showMenu();
    EXPECT_EQ(window->recordedMenu()->popups(), 1);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowImpTest, AddMenuItemHandsTheItemToTheMenu) {
    window->createMenu();
    window->addMenuItem(MenuItem{"CVCP-003001", std::make_shared<CountingCommand>(4)});
    ASSERT_EQ(window->menu()->items().size(), 1u);
    EXPECT_EQ(window->menu()->items().front().id(), 4);
}

TEST_F(WindowImpTest, SetMenuReplacesTheMenu) {
    window->createMenu();
    const auto replacement = std::make_shared<RecordingMenu>("CVCP-001001");
    window->setMenu(replacement);
    EXPECT_EQ(window->menu(), replacement);
}

TEST_F(WindowImpTest, IsWidgetEnabledAsksTheWidget) {
    addButton(*window, 7, 0, std::make_shared<CountingCommand>(4));
    EXPECT_TRUE(window->isWidgetEnabled(7));
    window->widget(7)->setEnabled(false);
    EXPECT_FALSE(window->isWidgetEnabled(7));
    expectFailure<std::logic_error>([&] { window->isWidgetEnabled(8); }, "widget is not found");
}

TEST_F(WindowImpTest, TitleIsACopy) {
    std::string title = window->title();
    title += "x";
    EXPECT_EQ(window->title(), "CVCP-001001");
}

// The window handle.

TEST_F(WindowImpTest, WindowCreatesTheNativeWindow) {
    const Window handle(window);
    EXPECT_EQ(window->calls().front(), "create");
    EXPECT_EQ(window->caption(), "Corvanite Control Panel");
    EXPECT_EQ(handle.imp(), window);
}

TEST_F(WindowImpTest, AWindowThatCantBeCreatedFailsWithCVCP006019) {
    const auto failing = std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{480, 360},
                                                           RecordingWindow::Options{false, true});
    expectFailure<BasicException>([&] { Window handle(failing); },
                                  "Error creating control panel window");
}

TEST_F(WindowImpTest, WindowForwardsToItsImplementation) {
    Window handle(window);
    handle.show();
    EXPECT_TRUE(window->isVisible());
    handle.hide();
    EXPECT_FALSE(window->isVisible());
    handle.addLabel(LabelRecord{3, onTab(0)});
    ButtonRecord button{7, 4, onTab(0), std::make_shared<CountingCommand>(4)};
    handle.addButton(button);
    handle.addSyslink(ButtonRecord{2, 12, onTab(0), std::make_shared<CountingCommand>(12)});
    handle.addCheckbox(ButtonRecord{30, 13, onTab(1), std::make_shared<CountingCommand>(13)});
    handle.addTabpanel(TabpanelRecord{9, onTab(-1), {"CVCP-002001"}});
    handle.addCombobox(ComboboxRecord{21, 0, onTab(1), {"CVCP-005201"}, nullptr});
    handle.createMenu();
    handle.addMenuItem(MenuItem{"CVCP-003002", std::make_shared<CountingCommand>(6)});
    handle.destroy();
    EXPECT_EQ(window->calls(),
              (std::vector<std::string>{"create", "show", "hide", "addLabel 3", "addButton 7",
                                        "addSyslink 2", "addCheckbox 30", "addTabpanel 9",
                                        "addCombobox 21", "createMenu", "destroy"}));
    EXPECT_EQ(window->menu()->items().size(), 1u);
    EXPECT_TRUE(window->destroyed());
}

} // namespace
