#include "core/program_entry.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"

namespace {

// Start-up steps that write down what ran, with the answers a test chooses.
struct StepRecorder {
    std::vector<std::string> ran;
    bool otherInstanceRuns = false;
    bool installationComplete = true;
    int exitCode = 0;
    std::string commandLineSeen;
    std::function<void()> failInApplication;

    StartupSteps steps() {
        return {
            [this] { ran.push_back("language"); },
            [this] { ran.push_back("quit"); },
            [this] {
                ran.push_back("instance");
                return otherInstanceRuns;
            },
            [this] {
                ran.push_back("installation");
                return installationComplete;
            },
            [this] { ran.push_back("version"); },
            [this](const std::string& line) {
                ran.push_back("application");
                commandLineSeen = line;
                if (failInApplication) {
                    failInApplication();
                }
                return exitCode;
            },
        };
    }
};

struct Box {
    std::wstring caption;
    std::wstring text;
    unsigned flags;
};

// Records the boxes shown while it lives, with the catalogues in English.
struct EntryFixture : ::testing::Test {
    void SetUp() override {
        language = panelMessages.language;
        panelMessages.setLanguage(English);
        setMessageBoxSink(
            [this](const std::wstring& caption, const std::wstring& text, unsigned flags) {
                boxes.push_back({caption, text, flags});
            });
    }
    void TearDown() override {
        setMessageBoxSink(nullptr);
        panelMessages.setLanguage(language);
    }

    StepRecorder recorder;
    std::vector<Box> boxes;
    int language = 0;
};

using Steps = std::vector<std::string>;

} // namespace

TEST_F(EntryFixture, EmptyCommandLineRunsTheNormalPath) {
    EXPECT_EQ(runControlPanel("", recorder.steps()), 0);
    EXPECT_EQ(recorder.ran,
              (Steps{"language", "instance", "installation", "version", "application"}));
    EXPECT_EQ(recorder.commandLineSeen, "");
    EXPECT_TRUE(boxes.empty());
}

TEST_F(EntryFixture, QuitSwitchEndsWithZeroBeforeTheInstanceTest) {
    EXPECT_EQ(runControlPanel("--quit", recorder.steps()), 0);
    EXPECT_EQ(recorder.ran, (Steps{"language", "quit"}));
}

TEST_F(EntryFixture, LeadingBlankOrOtherCaseIsNoSwitch) {
    for (const char* line : {" --quit", "--QUIT", "--quit --silent", "--quit ", "quit"}) {
        StepRecorder one;
        EXPECT_EQ(runControlPanel(line, one.steps()), 0) << line;
        EXPECT_EQ(one.ran.back(), "application") << line;
        EXPECT_EQ(one.commandLineSeen, line);
    }
}

TEST_F(EntryFixture, SecondStartEndsWithZeroWithoutLookingAtTheInstallation) {
    recorder.otherInstanceRuns = true;
    EXPECT_EQ(runControlPanel("", recorder.steps()), 0);
    EXPECT_EQ(recorder.ran, (Steps{"language", "instance"}));
}

TEST_F(EntryFixture, MissingHostFilesShowCVCP006018AndExitWithOne) {
    recorder.installationComplete = false;
    EXPECT_EQ(runControlPanel("", recorder.steps()), 1);
    EXPECT_EQ(recorder.ran, (Steps{"language", "instance", "installation"}));
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].caption, L"Corvanite");
    EXPECT_EQ(boxes[0].text, L"Files needed for running/stopping Corvanite application are missed");
    EXPECT_EQ(boxes[0].flags, 0x10010u);
}

TEST_F(EntryFixture, FailureOfTheApplicationIsShownAndGivesOne) {
    recorder.failInApplication = [] { throw std::logic_error("widget is not found"); };
    EXPECT_EQ(runControlPanel("", recorder.steps()), 1);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, L"widget is not found");
}

TEST_F(EntryFixture, BasicExceptionKeepsItsWords) {
    recorder.failInApplication = [] {
        throw BasicException("Error creating control panel window");
    };
    EXPECT_EQ(runControlPanel("--silent", recorder.steps()), 1);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, L"Error creating control panel window");
}

TEST_F(EntryFixture, ExitCodeOfTheMessageLoopIsTheProgramsExitCode) {
    recorder.exitCode = 7;
    EXPECT_EQ(runControlPanel("--silent", recorder.steps()), 7);
    EXPECT_EQ(recorder.commandLineSeen, "--silent");
}

TEST_F(EntryFixture, LanguageStandsOutsideTheFailureHandler) {
    StartupSteps steps = recorder.steps();
    steps.applyStartupLanguage = [] { throw std::runtime_error("registry"); };
    EXPECT_THROW(runControlPanel("", steps), std::runtime_error);
    EXPECT_TRUE(boxes.empty());
}

TEST(ProgramEntry, OnlyTheWholeLineQuitIsTheSwitch) {
    EXPECT_TRUE(isQuitSwitch("--quit"));
    EXPECT_FALSE(isQuitSwitch(""));
    EXPECT_FALSE(isQuitSwitch("--quit\t"));
    EXPECT_FALSE(isQuitSwitch("-quit"));
}
