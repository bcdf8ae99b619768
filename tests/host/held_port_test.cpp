// Who holds the server's port, from the rows of the TCP tables and what the system tells of
// their owners; and the words that tell the user.
#include "host/held_port.h"

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

using heldport::Holder;
using heldport::HolderKind;
using heldport::PortFacts;
using heldport::PortRow;

constexpr std::uint32_t listening = 2;
constexpr std::uint32_t timeWait = 11;
constexpr std::uint32_t established = 5;
constexpr std::uint32_t port = 8888;

PortFacts facts(std::vector<PortRow> rows) {
    PortFacts result;
    result.rows = std::move(rows);
    result.programs = {{4, "System"},
                       {700, "svchost.exe"},
                       {1200, "httpd.exe"},
                       {1300, "PortHolder.exe"},
                       {2000, "CorvaniteHost.exe"},
                       {2001, "CorvaniteHost.exe"}};
    result.services = {{700, "World Wide Web Publishing Service"}};
    result.ours = {2000, 2001};
    return result;
}

struct Case {
    const char* what;
    PortFacts facts;
    std::optional<Holder> holder;
};

TEST(HeldPort, TheHolderByTheRowsOnThePort) {
    PortFacts refused = facts({});
    refused.bindRefused = true;
    PortFacts refusedButHeld = facts({{listening, port, 1200, false}});
    refusedButHeld.bindRefused = true;
    const Case cases[] = {
        {"no row", facts({}), std::nullopt},
        {"a program on IPv4", facts({{listening, port, 1200, false}}),
         Holder{HolderKind::program, "httpd.exe", 1200}},
        {"a program on IPv6 only", facts({{listening, port, 1300, true}}),
         Holder{HolderKind::program, "PortHolder.exe", 1300}},
        {"a program on another port", facts({{listening, 8889, 1200, false}}), std::nullopt},
        {"a connection, not a listener", facts({{established, port, 1200, false}}), std::nullopt},
        {"pid 0 in TIME_WAIT", facts({{timeWait, port, 0, false}}), std::nullopt},
        {"pid 0 in TIME_WAIT before a program",
         facts({{timeWait, port, 0, false}, {listening, port, 1200, true}}),
         Holder{HolderKind::program, "httpd.exe", 1200}},
        {"a listener without an owner", facts({{listening, port, 0, false}}), std::nullopt},
        {"our own master and worker",
         facts({{listening, port, 2001, false}, {listening, port, 2000, true}}), std::nullopt},
        {"our own worker beside another program",
         facts({{listening, port, 2001, false}, {listening, port, 1300, true}}),
         Holder{HolderKind::program, "PortHolder.exe", 1300}},
        {"the system process: http.sys", facts({{listening, port, 4, false}}),
         Holder{HolderKind::httpService, "http.sys", 4}},
        {"a Windows service", facts({{listening, port, 700, true}}),
         Holder{HolderKind::service, "World Wide Web Publishing Service", 700}},
        {"a program that ended after the table was read", facts({{listening, port, 4321, false}}),
         Holder{HolderKind::ended, "", 4321}},
        {"no owner, the bind refused", refused, Holder{HolderKind::reserved, "", 0}},
        {"a holder before a refused bind", refusedButHeld,
         Holder{HolderKind::program, "httpd.exe", 1200}},
    };
    for (const Case& each : cases) {
        EXPECT_EQ(heldport::portHolder(each.facts, port), each.holder) << each.what;
    }
}

TEST(HeldPort, ThePortOfTheFirstListenDirective) {
    EXPECT_EQ(heldport::configuredPort("http {\n  server {\n    listen 8888;\n  }\n}\n"), 8888u);
    EXPECT_EQ(heldport::configuredPort("server {\r\n\tlisten\t127.0.0.1:9443 ssl;\r\n}"), 9443u);
    EXPECT_EQ(heldport::configuredPort("listen [::]:8443;"), 8443u);
    EXPECT_EQ(heldport::configuredPort("# listen 1;\nlisten 2;\nlisten 3;"), 2u);
    EXPECT_EQ(heldport::configuredPort("listener 5;"), std::nullopt);
    EXPECT_EQ(heldport::configuredPort("listen 70000;"), std::nullopt);
    EXPECT_EQ(heldport::configuredPort("listen unix:/tmp/socket;"), std::nullopt);
    EXPECT_EQ(heldport::configuredPort(""), std::nullopt);
}

class HeldPortWords : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::English); }
};

TEST_F(HeldPortWords, TheBoxNamesTheHolderOnALineOfItsOwn) {
    EXPECT_EQ(
        heldport::heldPortText(port, Holder{HolderKind::program, "PortHolder.exe", 1300}, "\n"),
        "The server can't start: port 8888 is held.\nIt is held by PortHolder.exe (process "
        "1300).");
    EXPECT_EQ(heldport::heldPortText(port, Holder{HolderKind::service, "Web Service", 700}, " "),
              "The server can't start: port 8888 is held. It is held by the Windows service \"Web "
              "Service\".");
    EXPECT_EQ(heldport::heldPortText(port, Holder{HolderKind::httpService, "http.sys", 4}, "\n"),
              "The server can't start: port 8888 is held.\nIt is held by the Windows HTTP service "
              "(http.sys).");
    EXPECT_EQ(heldport::heldPortText(port, Holder{HolderKind::reserved, "", 0}, "\n"),
              "The server can't start: port 8888 is held.\nIt is reserved by Windows.");
}

TEST_F(HeldPortWords, AHolderThatEndedIsNotNamed) {
    EXPECT_EQ(heldport::heldPortText(port, Holder{HolderKind::ended, "", 4321}, "\n"),
              "The server can't start: port 8888 is held.");
    EXPECT_EQ(heldport::heldPortText(port, std::nullopt, "\n"),
              "The server can't start: port 8888 is held.");
}

TEST_F(HeldPortWords, InTheUsersLanguage) {
    panelMessages.setLanguage(Language::Russian);
    EXPECT_EQ(cp1251ToUtf8(heldport::heldPortText(
                  port, Holder{HolderKind::program, "PortHolder.exe", 1300}, "\n")),
              "Сервер не может запуститься: порт 8888 занят.\nПорт занимает PortHolder.exe "
              "(процесс 1300).");
    panelMessages.setLanguage(Language::Ukrainian);
    EXPECT_EQ(cp1251ToUtf8(heldport::heldPortSentence(port)),
              "Сервер не може запуститися: порт 8888 зайнятий.");
}

} // namespace
