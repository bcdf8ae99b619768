#include "foundation/exceptions.h"

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

// Runs each test in one language and leaves the catalogues as it found them.
class Exceptions : public ::testing::Test {
protected:
    void SetUp() override { setCatalogues(Language::English); }
    void TearDown() override { setCatalogues(Language::Ukrainian); }

    static void setCatalogues(int language) {
        commonMessages.setLanguage(language);
        serviceMessages.setLanguage(language);
        panelMessages.setLanguage(language);
    }
};

const std::string cyrillicPath = "C:/Users/\xD0\x98\xD0\xB2\xD0\xB0\xD0\xBD/nginx.pid"; // Иван

} // namespace

TEST_F(Exceptions, ReadFileErrorShowsCyrillicPathInCp1251) {
    const filesys::ReadFileError error(cyrillicPath);
    EXPECT_EQ(std::string(error.what()),
              "Error reading file \"C:/Users/\xC8\xE2\xE0\xED/nginx.pid\"");
    EXPECT_EQ(fromCp1251(error.what()), utf8ToUtf16("Error reading file \"" + cyrillicPath + "\""));
}

TEST_F(Exceptions, LettersOutsideCp1251ShowAsQuestionMarksWhilePathStaysExact) {
    const std::string path = "C:/\xE4\xB8\xAD\xE6\x96\x87/a.txt"; // two Chinese letters
    const filesys::WriteFileError error(path);
    // "\?" keeps the two question marks and the slash from reading as a trigraph.
    EXPECT_EQ(std::string(error.what()), "Error writing file \"C:/?\?/a.txt\"");
    EXPECT_EQ(error.path(), path);
}

TEST_F(Exceptions, PathHoldingPlaceholderIsPutInOnce) {
    const filesys::ReadFolderError error("C:/%1/x");
    EXPECT_EQ(std::string(error.what()), "Error reading folder \"C:/%1/x\"");
}

TEST_F(Exceptions, FileIOErrorWithoutPlaceholderKeepsTemplate) {
    EXPECT_EQ(std::string(filesys::FileIOError("p", "plain").what()), "plain");
    EXPECT_EQ(std::string(filesys::FileIOError("p", "%").what()), "%");
    EXPECT_EQ(std::string(filesys::FileIOError("p", "%1 and %1").what()), "p and %1");
}

TEST_F(Exceptions, SizeLimitWordsNameThePath) {
    const filesys::FileIOError error("a.txt", commonMessages.text("CV-0011"));
    EXPECT_EQ(std::string(error.what()), "Size of file \"a.txt\" is larger than allowed");
}

TEST_F(Exceptions, ReadFileErrorKeepsWordsOfTheMomentItWasThrown) {
    const filesys::ReadFileError error("a.txt");
    setCatalogues(Language::Russian);
    EXPECT_EQ(std::string(error.what()), "Error reading file \"a.txt\"");
}

TEST_F(Exceptions, ClientPropertyNotSetGivesRowWordsAndCode307) {
    try {
        throw ClientPropertyNotSet();
    } catch (const std::exception& e) {
        EXPECT_STREQ(e.what(), "Client property is not set");
        const auto* basic = dynamic_cast<const BasicException*>(&e);
        ASSERT_NE(basic, nullptr);
        EXPECT_EQ(basic->code(), 307);
        EXPECT_EQ(basic->details(), "");
    }
}

TEST_F(Exceptions, BasicExceptionKeepsCodeMessageAndDetails) {
    const BasicException plain("words");
    EXPECT_STREQ(plain.what(), "words");
    EXPECT_EQ(plain.code(), 0);
    const BasicException full(306, "more", "why");
    EXPECT_STREQ(full.what(), "more");
    EXPECT_EQ(full.code(), 306);
    EXPECT_EQ(full.details(), "why");
}

TEST_F(Exceptions, LoadLibraryErrorNamesThePath) {
    EXPECT_STREQ(LoadLibraryError("C:/x/Corvanite.dll").what(),
                 "Error reading library \"C:/x/Corvanite.dll\"");
}

TEST_F(Exceptions, DetectorFailuresStayRussianInEveryLanguage) {
    EXPECT_EQ(cp1251ToUtf8(detector::ConnectionNotFound().what()), "Соединение отсутствует");
    EXPECT_EQ(cp1251ToUtf8(detector::InternalError().what()), "Внутренняя ошибка");
    setCatalogues(Language::Ukrainian);
    EXPECT_EQ(cp1251ToUtf8(detector::InternalError().what()), "Внутренняя ошибка");
}

TEST_F(Exceptions, ExceptionsAreCopyable) {
    const filesys::ReadFileError original(cyrillicPath);
    const filesys::ReadFileError copy = original;
    EXPECT_STREQ(copy.what(), original.what());
    EXPECT_EQ(copy.path(), cyrillicPath);
}
