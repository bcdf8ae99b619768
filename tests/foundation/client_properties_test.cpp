#include "foundation/client_properties.h"

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "tests/support/foundation/temp_folder.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace {

constexpr std::uintmax_t sizeLimit = 104857600;

// A settings file of its own in a fresh folder for each test.
struct ClientPropertiesFile : ::testing::Test {
    std::string content() const {
        std::ifstream stream(nativePath(store.filePath), std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    void setContent(std::string_view text) const {
        std::ofstream stream(nativePath(store.filePath), std::ios::binary | std::ios::trunc);
        stream << text;
    }

    bool fileExists() const { return std::filesystem::exists(nativePath(store.filePath)); }

    // Lengthens the file with zero bytes by writing its last byte. The C library's own truncate
    // first asks the volume for its free space, which Wine sometimes won't tell.
    void growTo(std::uintmax_t size) const {
        std::fstream stream(nativePath(store.filePath),
                            std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(static_cast<std::streamoff>(size - 1));
        stream.put('\0');
        stream.close();
        ASSERT_EQ(std::filesystem::file_size(nativePath(store.filePath)), size);
    }

    TempFolder folder;
    ClientProperties store{folder.file(clientPropertiesFileName)};
};

} // namespace

TEST_F(ClientPropertiesFile, WithNoFilePortAutoselectIsTrueAndLeavesNoFile) {
    EXPECT_TRUE(isPortAutoselect(store));
    EXPECT_FALSE(fileExists());
}

TEST_F(ClientPropertiesFile, WithNoFileUseUncPathsIsFalseAndLeavesItsDefaultLine) {
    EXPECT_FALSE(isUseUncPaths(store));
    EXPECT_EQ(content(), "cv_use_unc_paths=false\n");
}

TEST_F(ClientPropertiesFile, SetOfEarlierKeyLeavesBothLinesInKeyOrder) {
    setContent("z=1\n");
    store.set("a", "2");
    EXPECT_EQ(content(), "a=2\nz=1\n");
    EXPECT_EQ(store.get("z"), "1");
    EXPECT_EQ(store.get("a"), "2");
}

TEST_F(ClientPropertiesFile, LinesWithoutEqualsCommentsAndBlankLinesAreGoneAfterSet) {
    setContent("# settings of the panel\n\nnot a property\ncv_port_autoselect=false\n\n");
    store.set("cv_use_unc_paths", "true");
    EXPECT_EQ(content(), "cv_port_autoselect=false\ncv_use_unc_paths=true\n");
}

TEST_F(ClientPropertiesFile, UpperCaseTrueReadsAsTrueInBothReaders) {
    setContent("cv_port_autoselect=TRUE\ncv_use_unc_paths=TRUE\n");
    EXPECT_TRUE(isPortAutoselect(store));
    EXPECT_TRUE(isUseUncPaths(store));
}

TEST_F(ClientPropertiesFile, ValueOneReadsAsFalseInBothReaders) {
    setContent("cv_port_autoselect=1\ncv_use_unc_paths=1\n");
    EXPECT_FALSE(isPortAutoselect(store));
    EXPECT_FALSE(isUseUncPaths(store));
    EXPECT_EQ(content(), "cv_port_autoselect=1\ncv_use_unc_paths=1\n");
}

TEST_F(ClientPropertiesFile, CarriageReturnAtValueEndReadsTrueAndSurvivesRewrite) {
    setContent("cv_port_autoselect=true\r\n");
    EXPECT_TRUE(isPortAutoselect(store));
    EXPECT_EQ(store.get("cv_port_autoselect"), "true\r");
    store.set("other", "x");
    EXPECT_EQ(content(), "cv_port_autoselect=true\r\nother=x\n");
}

TEST_F(ClientPropertiesFile, EqualsInsideValueSurvivesRewrite) {
    setContent("formula=a=b\n");
    store.set("other", "x");
    EXPECT_EQ(content(), "formula=a=b\nother=x\n");
    EXPECT_EQ(store.get("formula"), "a=b");
}

TEST_F(ClientPropertiesFile, KeyCannotBeMadeToHoldEquals) {
    store.set("a=b", "c");
    EXPECT_EQ(content(), "a=b=c\n");
    EXPECT_EQ(store.get("a"), "b=c");
    EXPECT_THROW(store.get("a=b"), ClientPropertyNotSet);
}

TEST_F(ClientPropertiesFile, FileOverTheLimitIsAnEmptyStoreAndNextSetKeepsOnlyItsKey) {
    setContent("cv_port_autoselect=false\n");
    growTo(sizeLimit + 1);
    EXPECT_THROW(store.get("cv_port_autoselect"), ClientPropertyNotSet);
    EXPECT_TRUE(isPortAutoselect(store));
    store.set("cv_use_unc_paths", "true");
    EXPECT_EQ(content(), "cv_use_unc_paths=true\n");
}

TEST_F(ClientPropertiesFile, FileOfExactlyTheLimitIsRead) {
    setContent("cv_port_autoselect=false\n");
    growTo(sizeLimit);
    EXPECT_EQ(store.get("cv_port_autoselect"), "false");
}

TEST_F(ClientPropertiesFile, UnwritableProfileFolderFailsSetWithCode306ButUseUncPathsIsFalse) {
    std::ofstream(nativePath(folder.file("profile"))) << "a file, not a folder";
    const ClientProperties unwritable{folder.file("profile") + "/" + clientPropertiesFileName};
    try {
        unwritable.set("cv_port_autoselect", "true");
        FAIL() << "a settings file was written below a file";
    } catch (const BasicException& error) {
        EXPECT_EQ(error.code(), 306);
        EXPECT_EQ(std::string(error.what()), std::string(serviceMessages.text("CV-002002")));
    }
    EXPECT_FALSE(isUseUncPaths(unwritable));
    EXPECT_TRUE(isPortAutoselect(unwritable));
}

TEST_F(ClientPropertiesFile, MissingKeyThrowsClientPropertyNotSet) {
    setContent("a=1\n");
    try {
        store.get("A");
        FAIL() << "a key was found in another case";
    } catch (const BasicException& error) {
        EXPECT_EQ(error.code(), 307);
        EXPECT_EQ(std::string(error.what()), std::string(serviceMessages.text("CV-002003")));
    }
}

TEST_F(ClientPropertiesFile, ZeroByteEndsTheText) {
    setContent(std::string("a=1\n\0b=2\n", 9));
    EXPECT_EQ(store.get("a"), "1");
    EXPECT_THROW(store.get("b"), ClientPropertyNotSet);
}

TEST_F(ClientPropertiesFile, LastOfSeveralLinesWithOneKeyWinsAndRewriteKeepsOne) {
    setContent("a=1\na=2\n");
    EXPECT_EQ(store.get("a"), "2");
    store.set("b", "3");
    EXPECT_EQ(content(), "a=2\nb=3\n");
}

TEST_F(ClientPropertiesFile, SetReplacesValueAndKeysAreNotTrimmed) {
    setContent(" a = 1 \n");
    store.set(" a ", "2");
    EXPECT_EQ(content(), " a =2\n");
    EXPECT_THROW(store.get("a"), ClientPropertyNotSet);
}

TEST_F(ClientPropertiesFile, ContentOverTheLimitIsNotWritten) {
    setContent("a=1\n");
    try {
        store.set("big", std::string(sizeLimit, 'x'));
        FAIL() << "content over the limit was written";
    } catch (const BasicException& error) {
        EXPECT_EQ(error.code(), 306);
        EXPECT_EQ(std::string(error.what()), std::string(serviceMessages.text("CV-002001")));
    }
    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(ClientPropertiesFile, ConcurrentSetsFromEightThreadsLoseNoKey) {
    constexpr int threadCount = 8;
    constexpr int keysPerThread = 25;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([this, thread] {
            const ClientProperties own{store.filePath};
            for (int key = 0; key < keysPerThread; ++key) {
                own.set("k" + std::to_string(thread) + "_" + std::to_string(key), "v");
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (int thread = 0; thread < threadCount; ++thread) {
        for (int key = 0; key < keysPerThread; ++key) {
            const std::string name = "k" + std::to_string(thread) + "_" + std::to_string(key);
            EXPECT_NO_THROW(EXPECT_EQ(store.get(name), "v")) << name;
        }
    }
}

TEST(ClientProperties, ProgramStoreIsTheDotFileInTheProfileFolder) {
    EXPECT_EQ(clientPropertiesFileName, ".corvanite_settings");
    EXPECT_EQ(clientProperties().filePath, filesys::profileFolder() + "/.corvanite_settings");
}

TEST(ClientProperties, KeysOfTheSettingsFile) {
    EXPECT_EQ(portAutoselectKey, "cv_port_autoselect");
    EXPECT_EQ(useUncPathsKey, "cv_use_unc_paths");
    EXPECT_EQ(languageKey, "cv_language");
}
