// The folder from which the server is started: the server opens its files through the system's
// 8-bit calls, so a folder whose name the code page can't write is reached by its short form.
#include "host/host_facts.h"

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"

namespace {

bool plainLetters(const std::string& path) {
    for (const char letter : path) {
        if (static_cast<unsigned char>(letter) > 0x7F) {
            return false;
        }
    }
    return true;
}

const std::string cyrillicFolder = "C:/Users/Public/Корванит Хост";

} // namespace

TEST(ServerFolder, AFolderThatTheCodePageWritesIsTakenAsItStands) {
    bool askedForShortForm = false;
    const auto folder =
        serverFolderOf("C:/Users/Public/Corvanite Host", plainLetters, [&](const std::string&) {
            askedForShortForm = true;
            return std::optional<std::string>("C:/CORVAN~1");
        });
    EXPECT_EQ(folder, std::optional<std::string>("C:/Users/Public/Corvanite Host"));
    EXPECT_FALSE(askedForShortForm);
}

TEST(ServerFolder, OtherwiseItsShortForm) {
    const auto folder = serverFolderOf(cyrillicFolder, plainLetters, [](const std::string& path) {
        return path == cyrillicFolder ? std::optional<std::string>("C:\\Users\\Public\\____~UQS")
                                      : std::nullopt;
    });
    EXPECT_EQ(folder, std::optional<std::string>("C:\\Users\\Public\\____~UQS"));
}

TEST(ServerFolder, NothingWithoutAShortForm) {
    EXPECT_FALSE(serverFolderOf(cyrillicFolder, plainLetters, [](const std::string&) {
                     return std::optional<std::string>();
                 }).has_value());
}

// A drive that keeps no short names answers with the long name itself.
TEST(ServerFolder, NothingWhenTheShortFormCantBeWrittenEither) {
    EXPECT_FALSE(serverFolderOf(cyrillicFolder, plainLetters, [](const std::string& path) {
                     return std::optional<std::string>(path);
                 }).has_value());
}

struct FolderNotWritable : ::testing::Test {
    FolderNotWritable() : saved(panelMessages.language.load()) {}
    ~FolderNotWritable() override { panelMessages.setLanguage(saved); }
    int saved;
};

// The box names the folder with all its letters, also those outside code page 1251.
TEST_F(FolderNotWritable, TheWordsNameTheFolderAndTheCodePage) {
    panelMessages.setLanguage(Language::English);
    const std::wstring text = folderNotWritableText("C:\\Users\\Jos\xC3\xA9 %2 Host", 1251);
    EXPECT_EQ(text.rfind(L"The server can't be started from the folder \"C:", 0), 0u)
        << text.size();
    EXPECT_NE(text.find(L"Jos\x00E9 %2 Host\""), std::wstring::npos);
    EXPECT_NE(text.find(L"code page 1251,"), std::wstring::npos);
}

TEST_F(FolderNotWritable, InRussianToo) {
    panelMessages.setLanguage(Language::Russian);
    const std::wstring text = folderNotWritableText("C:/x", 1252);
    EXPECT_NE(text.find(L"\x0421\x0435\x0440\x0432\x0435\x0440"), std::wstring::npos); // Сервер
    EXPECT_NE(text.find(L"1252"), std::wstring::npos);
}
