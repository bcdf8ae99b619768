#include "diagnostics/problem_mail.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "diagnostics/proxy_info.h"
#include "foundation/language.h"
#include "foundation/message_box.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

const std::string report = "\r\n\r\n--\r\n\r\nProxy settings (off):\n    Server: -\r\n\r\n";

// Sources of the test's own: a given ProgId and report, and a shell that writes links down.
struct MailScript {
    std::optional<std::string> progId;
    std::string reportText = report;
    std::string subject = "Corvanite 1.5.0";
    bool reportFails = false;
    std::vector<std::string> links;
    bool reportAsked = false;
};

ProblemMailSources sourcesOf(MailScript& script) {
    ProblemMailSources sources;
    sources.mailProgId = [&script] { return script.progId; };
    sources.reportText = [&script] {
        script.reportAsked = true;
        if (script.reportFails) {
            throw std::runtime_error("report failed");
        }
        return script.reportText;
    };
    sources.subject = [&script] { return script.subject; };
    sources.openLink = [&script](const std::string& link) { script.links.push_back(link); };
    return sources;
}

class BoxRecorder {
public:
    BoxRecorder() {
        setMessageBoxSink(
            [this](const std::wstring& caption, const std::wstring& text, unsigned flags) {
                boxes.push_back(utf16ToUtf8(caption) + "|" + utf16ToUtf8(text) + "|" +
                                std::to_string(flags));
            });
    }
    ~BoxRecorder() { setMessageBoxSink(nullptr); }
    std::vector<std::string> boxes;
};

const std::string information = std::to_string(0x10040);

struct ProblemMailTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }
    BoxRecorder recorder;
};

} // namespace

TEST_F(ProblemMailTest, WithNoDefaultMailProgramTheLinkIsStillHandedToTheShell) {
    MailScript script;
    composeProblemMailWith(sourcesOf(script));
    ASSERT_EQ(script.links.size(), 1u);
    EXPECT_EQ(script.links[0].find("mailto:" + SupportMailAddress + "?subject="), 0u);
    EXPECT_TRUE(recorder.boxes.empty());
}

TEST_F(ProblemMailTest, ProgIdContainingSpikeShowsThatNameAndOpensNothing) {
    MailScript script;
    script.progId = "AppX.SpikeMail.Handler";
    composeProblemMailWith(sourcesOf(script));
    EXPECT_TRUE(script.links.empty());
    EXPECT_FALSE(script.reportAsked);
    EXPECT_EQ(recorder.boxes,
              (std::vector<std::string>{
                  "Corvanite|Spike is not supported. Please change the default email "
                  "application.|" +
                  information}));
}

TEST_F(ProblemMailTest, BlueMailIsRecognisedByItsPackageId) {
    MailScript script;
    script.progId = "AppXy7hdrppc9sgq36030xawbfw42ayy05gt";
    composeProblemMailWith(sourcesOf(script));
    EXPECT_TRUE(script.links.empty());
    ASSERT_EQ(recorder.boxes.size(), 1u);
    EXPECT_EQ(recorder.boxes[0].find("Corvanite|BlueMail is not supported."), 0u);
}

TEST_F(ProblemMailTest, PatternsAreCaseSensitive) {
    MailScript script;
    script.progId = "spike";
    composeProblemMailWith(sourcesOf(script));
    EXPECT_EQ(script.links.size(), 1u);
}

TEST_F(ProblemMailTest, BlankInTheSubjectComesOutAsPercent20) {
    MailScript script;
    composeProblemMailWith(sourcesOf(script));
    ASSERT_EQ(script.links.size(), 1u);
    EXPECT_NE(script.links[0].find("?subject=Corvanite%201.5.0&body="), std::string::npos);
}

TEST_F(ProblemMailTest, BodyBeginsWithTheReportsOpeningOfRawCarriageReturns) {
    MailScript script;
    composeProblemMailWith(sourcesOf(script));
    ASSERT_EQ(script.links.size(), 1u);
    const std::string& link = script.links[0];
    const std::string body = link.substr(link.find("&body=") + 6);
    EXPECT_EQ(body.rfind("\r%0D%0A\r%0D%0A--\r%0D%0A", 0), 0u);
}

TEST_F(ProblemMailTest, LineFeedInsideABlockComesOutWithoutACarriageReturn) {
    MailScript script;
    composeProblemMailWith(sourcesOf(script));
    ASSERT_EQ(script.links.size(), 1u);
    EXPECT_NE(script.links[0].find("(off):%0D%0A%20%20%20%20Server:%20-\r%0D%0A"),
              std::string::npos);
}

TEST_F(ProblemMailTest, WholeLinkForAGivenReport) {
    EXPECT_EQ(mailLink("a@b.c", "Corvanite 1.0", "x y\r\nz&q=1#%+?"),
              "mailto:a@b.c?subject=Corvanite%201.0&body=x%20y\r%0D%0Az&q=1#%+?");
}

TEST(ProblemMail, InTheRussianProgramTheLabelsReachTheShellAsWindows1251Bytes) {
    panelMessages.setLanguage(Language::Russian);
    MailScript script;
    script.reportText = detector::proxySectionText(detector::ProxyInfo{});
    composeProblemMailWith(sourcesOf(script));
    panelMessages.setLanguage(Language::Ukrainian);
    ASSERT_EQ(script.links.size(), 1u);
    const std::string expected = utf8ToCp1251("Настройки%20прокси%20(выключено):%0D%0A");
    EXPECT_NE(script.links[0].find(expected), std::string::npos);
}

TEST_F(ProblemMailTest, FailingReportShowsTheLaunchErrorBox) {
    MailScript script;
    script.reportFails = true;
    composeProblemMailWith(sourcesOf(script));
    EXPECT_TRUE(script.links.empty());
    EXPECT_EQ(recorder.boxes,
              (std::vector<std::string>{"Corvanite|Error launching the email-app|" + information}));
}

TEST(ProblemMail, SupportAddressesHoldTheOneAddress) {
    EXPECT_EQ(supportAddresses(), (std::vector<std::string>{SupportMailAddress}));
    EXPECT_FALSE(SupportMailAddress.empty());
}

TEST(ProblemMail, UnsupportedClientsAreWalkedInKeyOrder) {
    std::vector<std::string> names;
    for (const auto& [name, pattern] : unsupportedMailClients) {
        names.push_back(name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"BlueMail", "Spike"}));
}

TEST(ProblemMail, SubjectIsTheProductWordABlankAndTheLibraryVersion) {
    const std::string subject = reportSubject();
    EXPECT_EQ(subject.rfind("Corvanite ", 0), 0u);
    EXPECT_GT(subject.size(), std::string("Corvanite ").size());
}
