#include "panel/window_imp.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/client_properties.h"
#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "foundation/work_lane.h"
#include "host/host_facts.h"
#include "host/log_level.h"
#include "panel/tray_tip.h"
#include "panel/window_imp.h"
#include "tests/support/foundation/settings_file_guard.h"
#include "tests/support/host/model_installation.h"
#include "tests/support/host/model_recorders.h"
#include "tests/support/host/model_system.h"
#include "tests/support/panel/counting_command.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/recording_window.h"

// The way from an event to a command, the long-running commands on their worker, and the change
// of language, on a window whose commands are the test's own, so that no server is involved. The
// update cycle over a live server is tested with the layout file.

namespace {

using namespace std::chrono_literals;

WidgetDisposition shows(const char* textId, std::int32_t tabIndex) {
    WidgetDisposition disposition;
    disposition.text = textId;
    disposition.displayText = panelMessages.text(textId);
    disposition.tabIndex = tabIndex;
    return disposition;
}

// A command that runs until the test lets it go, and notes the thread it ran on.
class HeldCommand : public Command {
public:
    explicit HeldCommand(std::int32_t id) : Command(id) {}
    void execute() override {
        thread = std::this_thread::get_id();
        started.set_value();
        released.get_future().wait();
        ++runs;
    }
    std::promise<void> started;
    std::promise<void> released;
    std::thread::id thread;
    std::atomic<int> runs{0};
};

// A job posted behind the lane's others runs once they are done.
bool waitForLane(WorkLane& lane) {
    auto done = std::make_shared<std::promise<void>>();
    std::future<void> ended = done->get_future();
    lane.post([done] { done->set_value(); });
    return ended.wait_for(60s) == std::future_status::ready;
}

// A minute, for a loaded machine; an idle worker ends the wait at once. The window is free a moment
// before its lane job has ended: the job may still run the next operation, or read nginx.conf for
// the box, so the wait lasts until the server's lane is at rest too.
bool waitUntilIdle() {
    for (int i = 0; i < 2400; ++i) {
        if (!commandInProgress.load()) {
            return waitForLane(serverLane());
        }
        std::this_thread::sleep_for(25ms);
    }
    return false;
}

struct WindowBehaviourTest : testing::Test {
    void SetUp() override {
        // The log level box reads nginx.conf at its start, the check boxes the settings file:
        // both are the test's own.
        installation.writeText("conf/nginx.conf", "error_log logs/error.log info;\n");
        panelMessages.setLanguage(Language::English);
        commandInProgress.store(false);
        setSelectedLogLevel(0);
    }
    void TearDown() override {
        EXPECT_TRUE(waitUntilIdle());
        EXPECT_TRUE(waitForLane(reportLane()));
        setSelectedLogLevel(0);
    }

    // Tab panel 9, Run 7, Stop 8, the language and log level boxes 12 and 13, the two check
    // boxes 14 and 15, a label on each tab and the menu with Run, Control panel and Exit.
    void build(std::shared_ptr<Command> run, std::shared_ptr<Command> stop,
               std::shared_ptr<Command> logLevel) {
        window->addTabpanel(
            TabpanelRecord{9, shows("CVCP-002001", -1), {"CVCP-002001", "CVCP-002002"}});
        window->addCombobox(ComboboxRecord{12,
                                           0,
                                           shows("CVCP-005101", 1),
                                           {"CVCP-005101", "CVCP-005102", "CVCP-005103"},
                                           nullptr});
        window->addCombobox(ComboboxRecord{13,
                                           9,
                                           shows("CVCP-005201", 1),
                                           {"CVCP-005201", "CVCP-005202", "CVCP-005203"},
                                           std::move(logLevel)});
        window->addCheckbox(
            ButtonRecord{14, 13, shows("CVCP-005401", 1), std::make_shared<CountingCommand>(13)});
        window->addCheckbox(
            ButtonRecord{15, 14, shows("CVCP-005402", 1), std::make_shared<CountingCommand>(14)});
        window->addButton(ButtonRecord{7, 1, shows("CVCP-000001", 0), std::move(run)});
        window->addButton(ButtonRecord{8, 2, shows("CVCP-000002", 0), std::move(stop)});
        window->addLabel(LabelRecord{20, shows("CVCP-005006", 0)});
        window->addLabel(LabelRecord{26, shows("CVCP-005008", 1)});
        window->createMenu();
        window->addMenuItem(MenuItem{"CVCP-003001", std::make_shared<CountingCommand>(4)});
        window->addMenuItem(MenuItem{"CVCP-000001", menuRun});
        window->addMenuItem(MenuItem{"CVCP-003002", menuExit});
        window->clearWidgetJournal();
    }

    void build() {
        build(std::make_shared<CountingCommand>(1), std::make_shared<CountingCommand>(2),
              std::make_shared<CountingCommand>(9));
    }

    // The window with one of the three long-running commands replaced.
    void buildWith(std::int32_t id, std::shared_ptr<Command> command) {
        build(id == 1 ? command : std::make_shared<CountingCommand>(1),
              id == 2 ? command : std::make_shared<CountingCommand>(2),
              id == 9 ? command : std::make_shared<CountingCommand>(9));
    }

    HostModelInstallation installation;
    std::shared_ptr<RecordingWindow> window =
        std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{460, 360});
    std::shared_ptr<CountingCommand> menuRun = std::make_shared<CountingCommand>(1);
    std::shared_ptr<CountingCommand> menuExit = std::make_shared<CountingCommand>(6);
    HostModelBoxRecorder boxes;
};

// Long-running commands.

TEST_F(WindowBehaviourTest, RunStopAndLogLevelGoToAWorkerWithRunAndStopDisabledAtOnce) {
    for (std::int32_t id : {1, 2, 9}) {
        window = std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{460, 360});
        const auto held = std::make_shared<HeldCommand>(id);
        buildWith(id, held);
        EXPECT_TRUE(window->runCommand(id));
        held->started.get_future().wait();
        EXPECT_TRUE(commandInProgress.load());
        EXPECT_FALSE(window->widget(7)->isEnabled());
        EXPECT_FALSE(window->widget(8)->isEnabled());
        // The level box stays usable: a choice meanwhile waits for its turn.
        EXPECT_TRUE(window->widget(13)->isEnabled());
        EXPECT_NE(held->thread, std::this_thread::get_id());
        EXPECT_EQ(window->recordedMenu()->calls().back(),
                  "enableItem " + std::to_string(id) + " 0");
        held->released.set_value();
        EXPECT_TRUE(waitUntilIdle());
        EXPECT_EQ(held->runs, 1);
    }
}

TEST_F(WindowBehaviourTest, TheWorkerRunsTheCommandOfItsFixedWidgetWhoeverAsked) {
    const auto run = std::make_shared<CountingCommand>(1);
    build(run, std::make_shared<CountingCommand>(2), std::make_shared<CountingCommand>(9));
    // The tray's Run item asks by its id; the worker takes Run's button all the same.
    window->commandEvent(1);
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(run->runs, 1);
    EXPECT_EQ(menuRun->runs, 0);
}

TEST_F(WindowBehaviourTest, AFailureOnTheWorkerIsShownWithTheActionAndTheRawTitle) {
    const char* const words[] = {"startup", "stop", "change loglevel"};
    const std::int32_t ids[] = {1, 2, 9};
    for (int i = 0; i < 3; ++i) {
        window = std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{460, 360});
        const auto failing = std::make_shared<CountingCommand>(
            ids[i], [] { throw std::runtime_error("Failed to run application"); });
        buildWith(ids[i], failing);
        window->runCommand(ids[i]);
        EXPECT_TRUE(waitUntilIdle());
        ASSERT_EQ(boxes.boxes().size(), static_cast<std::size_t>(i + 1));
        const HostModelBox box = boxes.boxes().back();
        EXPECT_EQ(box.caption, L"CVCP-001001");
        EXPECT_EQ(box.text, utf8ToUtf16(std::string("An error occurred during the ") + words[i] +
                                        " process of Corvanite"));
        EXPECT_EQ(box.flags, 0x10010u);
    }
}

// Operations that end one right after another, as Stop then Run pressed quickly: each one ends
// and tells its failure, however close the previous one ended.
TEST_F(WindowBehaviourTest, ManyFailingOperationsInARowEachShowTheirBoxAndLeaveTheWorkerIdle) {
    build(std::make_shared<CountingCommand>(1, [] { throw std::runtime_error("x"); }),
          std::make_shared<CountingCommand>(2, [] { throw std::runtime_error("x"); }),
          std::make_shared<CountingCommand>(9));
    for (int round = 0; round < 300; ++round) {
        window->runCommand(1 + round % 2);
        ASSERT_TRUE(waitUntilIdle()) << round;
        ASSERT_EQ(boxes.boxes().size(), static_cast<std::size_t>(round + 1));
    }
}

TEST_F(WindowBehaviourTest, AnyThrownValueOnTheWorkerEndsInTheBoxAndClearsTheFlag) {
    build(std::make_shared<CountingCommand>(1, [] { throw 42; }),
          std::make_shared<CountingCommand>(2), std::make_shared<CountingCommand>(9));
    window->runCommand(1);
    EXPECT_TRUE(waitUntilIdle());
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, L"An error occurred during the startup process of Corvanite");
}

TEST_F(WindowBehaviourTest, TheFailureBoxIsInTheLanguageInForce) {
    panelMessages.setLanguage(Language::Russian);
    build(std::make_shared<CountingCommand>(1),
          std::make_shared<CountingCommand>(2, [] { throw std::runtime_error("x"); }),
          std::make_shared<CountingCommand>(9));
    window->runCommand(2);
    EXPECT_TRUE(waitUntilIdle());
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, L"Произошла ошибка во время процесса остановки Corvanite");
}

TEST_F(WindowBehaviourTest, AWindowWithoutTheCarrierWidgetShowsTheFailureBox) {
    window->addButton(
        ButtonRecord{8, 2, shows("CVCP-000002", 0), std::make_shared<CountingCommand>(2)});
    window->addButton(
        ButtonRecord{7, 1, shows("CVCP-000001", 0), std::make_shared<CountingCommand>(1)});
    window->addCombobox(ComboboxRecord{13,
                                       9,
                                       shows("CVCP-005201", 1),
                                       {"CVCP-005201", "CVCP-005202", "CVCP-005203"},
                                       std::make_shared<CountingCommand>(9)});
    window->runOnWorker(5);
    EXPECT_TRUE(waitUntilIdle());
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, L"An error occurred during the  process of Corvanite");
}

// Other commands.

TEST_F(WindowBehaviourTest, OtherCommandsRunAtOnceThroughTheFirstWidgetThatCarriesThem) {
    build();
    const auto first = std::make_shared<CountingCommand>(5);
    const auto second = std::make_shared<CountingCommand>(5);
    const auto menuHide = std::make_shared<CountingCommand>(5);
    window->addButton(ButtonRecord{11, 5, shows("CVCP-004001", -1), first});
    window->addSyslink(ButtonRecord{16, 5, shows("CVCP-004101", 0), second});
    window->addMenuItem(MenuItem{"CVCP-004001", menuHide});
    EXPECT_TRUE(window->runCommand(5));
    EXPECT_EQ(first->runs, 1);
    EXPECT_EQ(second->runs, 0);
    EXPECT_EQ(menuHide->runs, 0);
    EXPECT_FALSE(commandInProgress.load());
}

TEST_F(WindowBehaviourTest, ACommandThatNoWidgetCarriesRunsThroughTheMenu) {
    build();
    EXPECT_TRUE(window->runCommand(6));
    EXPECT_EQ(menuExit->runs, 1);
    EXPECT_FALSE(window->runCommand(3));
}

TEST_F(WindowBehaviourTest, WithoutWidgetOrMenuNothingRuns) {
    window->addLabel(LabelRecord{20, shows("CVCP-005006", 0)});
    EXPECT_FALSE(window->runCommand(6));
}

TEST_F(WindowBehaviourTest, AFailureOfAWidgetsCommandReachesTheCaller) {
    build();
    window->addButton(ButtonRecord{
        10, 3, shows("CVCP-004002", 0),
        std::make_shared<CountingCommand>(3, [] { throw std::runtime_error("no logs"); })});
    EXPECT_THROW(window->runCommand(3), std::runtime_error);
}

TEST_F(WindowBehaviourTest, AClickOnTheTabPanelItselfFindsTheFirstWidgetWithCommandZero) {
    build();
    window->clearWidgetJournal();
    EXPECT_TRUE(window->runCommand(0));
    EXPECT_TRUE(window->widgetJournal().empty());
    EXPECT_FALSE(commandInProgress.load());
}

// The check boxes act on their ids themselves.

struct CheckBoxEventTest : WindowBehaviourTest {
    SettingsFileGuard settings;
};

TEST_F(CheckBoxEventTest, IdThirteenStoresTheCheckOfPortAutoselection) {
    build();
    window->recorded(14)->check(true);
    EXPECT_FALSE(window->commandEvent(13));
    EXPECT_EQ(clientProperties().get(portAutoselectKey), "true");
    EXPECT_TRUE(boxes.boxes().empty());
    window->recorded(14)->check(false);
    window->commandEvent(13);
    EXPECT_EQ(clientProperties().get(portAutoselectKey), "false");
    ASSERT_EQ(boxes.boxes().size(), 1u);
    EXPECT_EQ(boxes.boxes()[0].text, fromCp1251(panelMessages.text("CVCP-006105")));
}

TEST_F(CheckBoxEventTest, IdFourteenStoresTheCheckOfUncPaths) {
    build();
    window->recorded(15)->check(true);
    EXPECT_FALSE(window->commandEvent(14));
    EXPECT_EQ(clientProperties().get(useUncPathsKey), "true");
    window->recorded(15)->check(false);
    window->commandEvent(14);
    EXPECT_EQ(clientProperties().get(useUncPathsKey), "false");
    EXPECT_TRUE(boxes.boxes().empty());
}

TEST_F(WindowBehaviourTest, OtherCommandEventsRunTheCommand) {
    build();
    EXPECT_TRUE(window->commandEvent(6));
    EXPECT_EQ(menuExit->runs, 1);
}

// Log level.

TEST_F(WindowBehaviourTest, ALogLevelChoiceStoresTheIndexAndRunsCommandNine) {
    const auto apply = std::make_shared<CountingCommand>(9);
    build(std::make_shared<CountingCommand>(1), std::make_shared<CountingCommand>(2), apply);
    window->changeLogLevel(2);
    EXPECT_EQ(selectedLogLevel.load(), 2);
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(apply->runs, 1);
}

TEST_F(WindowBehaviourTest, ALogLevelBoxWithoutSelectionStoresNoLevel) {
    build();
    window->changeLogLevel(-1);
    EXPECT_EQ(selectedLogLevel.load(), 255);
}

// A level change that notes the level chosen when it runs; its first run waits until the test
// lets it go.
class LevelCommand : public Command {
public:
    LevelCommand() : Command(9) {}
    void execute() override {
        levels.push_back(selectedLogLevel.load());
        if (levels.size() == 1) {
            started.set_value();
            released.get_future().wait();
        }
    }
    std::promise<void> started;
    std::promise<void> released;
    // Written by the worker only, read once it is idle.
    std::vector<int> levels;
};

TEST_F(WindowBehaviourTest, ThreeLevelChoicesInARowMakeTwoOperationsTheSecondWithTheLastLevel) {
    const auto apply = std::make_shared<LevelCommand>();
    build(std::make_shared<CountingCommand>(1), std::make_shared<CountingCommand>(2), apply);
    std::future<void> started = apply->started.get_future();
    window->changeLogLevel(2);
    started.wait();
    EXPECT_TRUE(window->widget(13)->isEnabled());
    window->changeLogLevel(1);
    window->changeLogLevel(0);
    apply->released.set_value();
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(apply->levels, (std::vector<int>{2, 0}));
}

TEST_F(WindowBehaviourTest, ALevelChosenWhileAStopRunsIsAppliedRightAfterIt) {
    const auto stop = std::make_shared<HeldCommand>(2);
    const auto apply = std::make_shared<CountingCommand>(9, [] {
        // Still one long-running command: Run and Stop wait for the level too.
        EXPECT_TRUE(commandInProgress.load());
    });
    build(std::make_shared<CountingCommand>(1), stop, apply);
    std::future<void> started = stop->started.get_future();
    window->runCommand(2);
    started.wait();
    window->changeLogLevel(1);
    EXPECT_EQ(apply->runs, 0);
    stop->released.set_value();
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(stop->runs, 1);
    EXPECT_EQ(apply->runs, 1);
}

TEST_F(WindowBehaviourTest, WhenTheLevelChangesEndTheBoxShowsTheLevelOfNginxConf) {
    // The commands are the test's own and write nothing: the file keeps "info".
    build();
    window->changeLogLevel(2);
    window->recorded(13)->select(2);
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(window->deliverLaneResults(), 1u);
    EXPECT_EQ(window->widget(13)->selectedIndex(), 1);
}

TEST_F(WindowBehaviourTest, ALevelResultArrivingWhileANewerChoiceWaitsLeavesTheBoxAlone) {
    const auto stop = std::make_shared<HeldCommand>(2);
    build(std::make_shared<CountingCommand>(1), stop, std::make_shared<CountingCommand>(9));
    std::future<void> started = stop->started.get_future();
    window->runCommand(2);
    started.wait();
    window->recorded(13)->select(2);
    window->laneResultArrived(LaneResult::levelSettled, 0);
    EXPECT_EQ(window->widget(13)->selectedIndex(), 2);
    stop->released.set_value();
    EXPECT_TRUE(waitUntilIdle());
    // Run and Stop alone tell no level.
    EXPECT_EQ(window->deliverLaneResults(), 0u);
}

TEST_F(WindowBehaviourTest, WhileOneLongRunningCommandRunsARunOrStopIsDropped) {
    const auto run = std::make_shared<CountingCommand>(1);
    const auto stop = std::make_shared<HeldCommand>(2);
    build(run, stop, std::make_shared<CountingCommand>(9));
    std::future<void> started = stop->started.get_future();
    EXPECT_TRUE(window->runCommand(2));
    started.wait();
    EXPECT_TRUE(window->runCommand(1));
    window->runOnWorker(2);
    stop->released.set_value();
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(stop->runs, 1);
    EXPECT_EQ(run->runs, 0);
}

// Reports.

// Delivers the window's lane results as its message loop would, until one came; a minute at most.
bool deliverOne(RecordingWindow& window) {
    for (int i = 0; i < 2400; ++i) {
        if (window.deliverLaneResults() > 0) {
            return true;
        }
        std::this_thread::sleep_for(25ms);
    }
    return false;
}

class ReportLaneTest : public WindowBehaviourTest {
protected:
    // The two report links, 16 and 17, on the Management tab.
    void buildWithReports(std::shared_ptr<Command> information, std::shared_ptr<Command> problem) {
        build();
        window->addSyslink(ButtonRecord{16, 10, shows("CVCP-004101", 0), std::move(information)});
        window->addSyslink(ButtonRecord{17, 11, shows("CVCP-004102", 0), std::move(problem)});
    }
    std::string idleTip() const { return trayTipText("CVCP-001001"); }
};

TEST_F(ReportLaneTest, AReportRunsOnItsLaneWithTheLinksDisabledAndTheTrayTellingIt) {
    for (std::int32_t id : {10, 11}) {
        window = std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{460, 360});
        const auto held = std::make_shared<HeldCommand>(id);
        const auto other = std::make_shared<CountingCommand>(id == 10 ? 11 : 10);
        buildWithReports(id == 10 ? std::static_pointer_cast<Command>(held) : other,
                         id == 11 ? std::static_pointer_cast<Command>(held) : other);
        const std::string tip = idleTip();
        EXPECT_TRUE(window->runCommand(id));
        held->started.get_future().wait();
        EXPECT_NE(held->thread, std::this_thread::get_id());
        EXPECT_FALSE(window->widget(16)->isEnabled());
        EXPECT_FALSE(window->widget(17)->isEnabled());
        EXPECT_EQ(idleTip(), "Corvanite Control Panel: collecting the report for support");
        EXPECT_FALSE(window->recordedMenu()->calls().empty());
        // A second click, on either link, does nothing.
        EXPECT_TRUE(window->runCommand(id));
        EXPECT_TRUE(window->runCommand(id == 10 ? 11 : 10));
        held->released.set_value();
        ASSERT_TRUE(deliverOne(*window));
        EXPECT_TRUE(window->widget(16)->isEnabled());
        EXPECT_TRUE(window->widget(17)->isEnabled());
        EXPECT_EQ(idleTip(), tip);
        EXPECT_EQ(held->runs, 1);
        EXPECT_EQ(other->runs, 0);
    }
}

TEST_F(ReportLaneTest, AReportAskedForWhileTheServerLaneIsBusyRuns) {
    const auto stop = std::make_shared<HeldCommand>(2);
    const auto information = std::make_shared<CountingCommand>(10);
    buildWith(2, stop);
    window->addSyslink(ButtonRecord{16, 10, shows("CVCP-004101", 0), information});
    std::future<void> started = stop->started.get_future();
    window->runCommand(2);
    started.wait();
    window->runCommand(10);
    ASSERT_TRUE(deliverOne(*window));
    EXPECT_EQ(information->runs, 1);
    EXPECT_TRUE(commandInProgress.load());
    stop->released.set_value();
}

TEST_F(ReportLaneTest, AFailingReportFreesTheLinksAndTheTray) {
    buildWithReports(std::make_shared<CountingCommand>(10, [] { throw std::runtime_error("x"); }),
                     std::make_shared<CountingCommand>(11));
    const std::string tip = idleTip();
    window->runCommand(10);
    ASSERT_TRUE(deliverOne(*window));
    EXPECT_TRUE(window->widget(16)->isEnabled());
    EXPECT_EQ(idleTip(), tip);
}

TEST_F(ReportLaneTest, AReportThatOnlyTheMenuCarriesRunsOnTheLane) {
    build();
    const auto information = std::make_shared<CountingCommand>(10);
    window->addMenuItem(MenuItem{"CVCP-004101", information});
    EXPECT_TRUE(window->runCommand(10));
    ASSERT_TRUE(deliverOne(*window));
    EXPECT_EQ(information->runs, 1);
}

TEST_F(ReportLaneTest, AReportThatNothingCarriesDoesNotRun) {
    build();
    EXPECT_FALSE(window->runCommand(11));
    std::this_thread::sleep_for(50ms);
    EXPECT_EQ(window->deliverLaneResults(), 0u);
}

// A command whose target another run has taken.
class RefusingCommand : public CountingCommand {
public:
    using CountingCommand::CountingCommand;
    bool claim() override { return false; }
};

TEST_F(WindowBehaviourTest, ACommandWhoseTargetIsTakenDoesNotStart) {
    const auto run = std::make_shared<RefusingCommand>(1);
    const auto stop = std::make_shared<CountingCommand>(2);
    build(run, stop, std::make_shared<CountingCommand>(9));
    EXPECT_TRUE(window->runCommand(1));
    EXPECT_FALSE(commandInProgress.load());
    EXPECT_TRUE(window->widget(7)->isEnabled());
    EXPECT_TRUE(window->widget(13)->isEnabled());
    // The panel is free for the next one.
    window->runCommand(2);
    EXPECT_TRUE(waitUntilIdle());
    EXPECT_EQ(stop->runs, 1);
    EXPECT_EQ(run->runs, 0);
}

// Tabs.

TEST_F(WindowBehaviourTest, ATabChangeShowsTheSelectedTabsWidgets) {
    build();
    window->recorded(9)->select(1);
    window->changeTab();
    EXPECT_TRUE(window->recorded(26)->visible());
    EXPECT_TRUE(window->recorded(12)->visible());
    EXPECT_FALSE(window->recorded(20)->visible());
    EXPECT_FALSE(window->recorded(7)->visible());
    EXPECT_TRUE(window->recorded(9)->visible());
}

// Language.

struct LanguageChangeTest : WindowBehaviourTest {
    void SetUp() override {
        WindowBehaviourTest::SetUp();
        hostModelCreateProductKey();
    }
    void TearDown() override {
        WindowBehaviourTest::TearDown();
        applyLanguage(Language::English);
    }
    HostModelRegistryLock registry;
};

TEST_F(LanguageChangeTest, PutsEveryCatalogueTextIntoTheNewLanguage) {
    build();
    window->changeLanguage(0);
    EXPECT_EQ(panelMessages.language.load(), Language::Russian);
    EXPECT_EQ(cp1251ToUtf8(window->caption()), "Панель управления Corvanite");
    EXPECT_EQ(cp1251ToUtf8(window->recorded(7)->shown()), "Запустить");
    EXPECT_EQ(cp1251ToUtf8(window->recorded(20)->shown()), "Состояние сервера:");
    EXPECT_EQ(cp1251ToUtf8(window->recorded(14)->shown()), "Автовыбор порта");
    EXPECT_EQ(cp1251ToUtf8(window->recorded(12)->entryTexts()[1]), "Английский");
    EXPECT_EQ(cp1251ToUtf8(window->recorded(9)->entryTexts()[0]), "Управление");
    EXPECT_EQ(cp1251ToUtf8(window->recordedMenu()->entry(6)->text), "Выход");
    EXPECT_EQ(readLanguage(), Language::Russian);
}

TEST_F(LanguageChangeTest, UpdatesCaptionMenuAndWidgetsInTableOrderThenRefreshesTheTab) {
    build();
    window->recorded(9)->select(1);
    window->changeTab();
    window->clearWidgetJournal();
    window->changeLanguage(2);
    std::vector<std::string> updates;
    std::vector<std::string> refreshes;
    for (const std::string& call : window->widgetJournal()) {
        if (call.find("updateText") != std::string::npos) {
            updates.push_back(call);
        } else if (call.find("setVisible") != std::string::npos) {
            refreshes.push_back(call);
        }
    }
    EXPECT_EQ(updates,
              (std::vector<std::string>{"9 updateText", "12 updateText", "13 updateText",
                                        "14 updateText", "15 updateText", "7 updateText",
                                        "8 updateText", "20 updateText", "26 updateText"}));
    EXPECT_EQ(refreshes,
              (std::vector<std::string>{"12 setVisible 0", "12 setVisible 1", "13 setVisible 0",
                                        "13 setVisible 1", "14 setVisible 0", "14 setVisible 1",
                                        "15 setVisible 0", "15 setVisible 1", "26 setVisible 0",
                                        "26 setVisible 1"}));
    const auto lastUpdate = std::find_if(
        window->widgetJournal().rbegin(), window->widgetJournal().rend(),
        [](const std::string& call) { return call.find("updateText") != std::string::npos; });
    const auto firstRefresh = std::find_if(
        window->widgetJournal().begin(), window->widgetJournal().end(),
        [](const std::string& call) { return call.find("setVisible") != std::string::npos; });
    EXPECT_LT(lastUpdate.base() - window->widgetJournal().begin(),
              firstRefresh - window->widgetJournal().begin() + 1);
    EXPECT_EQ(window->calls().back(), "setCaption");
}

TEST_F(LanguageChangeTest, AComboBoxKeepsItsSelection) {
    build();
    window->recorded(13)->select(2);
    window->changeLanguage(0);
    EXPECT_EQ(window->recorded(13)->selectedIndex(), 2);
}

TEST_F(LanguageChangeTest, AChangeWhileACommandRunsChangesTheTextsAndLeavesTheButtonsAlone) {
    const auto held = std::make_shared<HeldCommand>(2);
    build(std::make_shared<CountingCommand>(1), held, std::make_shared<CountingCommand>(9));
    std::future<void> started = held->started.get_future();
    window->runCommand(2);
    started.wait();
    window->clearWidgetJournal();
    window->changeLanguage(0);
    for (const std::string& call : window->widgetJournal()) {
        EXPECT_EQ(call.find("setEnabled"), std::string::npos) << call;
    }
    EXPECT_FALSE(window->widget(7)->isEnabled());
    EXPECT_FALSE(window->widget(8)->isEnabled());
    EXPECT_TRUE(commandInProgress.load());
    EXPECT_EQ(cp1251ToUtf8(window->recorded(8)->shown()), "Остановить");
    held->released.set_value();
}

TEST_F(WindowBehaviourTest, UpdateTextsOfAWindowWhoseTrayCouldNotBeMadeFails) {
    window = std::make_shared<RecordingWindow>("CVCP-001001", PixelPair{460, 360},
                                               RecordingWindow::Options{true, false});
    window->addLabel(LabelRecord{20, shows("CVCP-005006", 0)});
    EXPECT_THROW(window->createMenu(), BasicException);
    expectFailure<std::logic_error>([&] { window->updateTexts(); }, "menu is not found");
}

} // namespace
