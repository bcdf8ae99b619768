#include "foundation/registry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

// A key of the tests' own under HKEY_CURRENT_USER, made for one test and removed with everything in
// it afterwards, and the few registry operations that only tests need (registry_*_test.cpp).
std::string makeTestKey();
void removeTestKey(const std::string& keyPath);
bool testKeyExists(const std::string& keyPath);
void setTestDwordValue(const std::string& keyPath, const char* name, std::uint32_t value);
void setTestBinaryValue(const std::string& keyPath, const char* name,
                        const std::vector<std::uint8_t>& data);

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr RegistryHive user = RegistryHive::CurrentUser;

const std::string cyrillicText = "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82"; // Привет

struct Registry : ::testing::Test {
    void SetUp() override { key = makeTestKey(); }
    void TearDown() override { removeTestKey(key); }

    std::string key;
};

} // namespace

TEST_F(Registry, ReadingUnderMissingKeyGivesEmptyOptional) {
    const std::string missing = key + "\\Missing";
    EXPECT_EQ(readRegistryText(user, missing, "Path"), std::nullopt);
    EXPECT_EQ(readRegistryBytes(user, missing, "Path"), std::nullopt);
    EXPECT_EQ(readRegistryText(RegistryHive::LocalMachine, missing, "Path"), std::nullopt);
}

TEST_F(Registry, ReadingMissingValueGivesEmptyOptional) {
    EXPECT_EQ(readRegistryText(user, key, "Missing"), std::nullopt);
    EXPECT_EQ(readRegistryBytes(user, key, "Missing"), std::nullopt);
}

TEST_F(Registry, WritingUnderMissingKeyIsFalseAndCreatesNothing) {
    const std::string missing = key + "\\Missing";
    EXPECT_FALSE(writeRegistryText(user, missing, "Language", "1049"));
    EXPECT_FALSE(testKeyExists(missing));
    EXPECT_TRUE(testKeyExists(key));
}

TEST_F(Registry, WrittenTextReadsBackTheSame) {
    ASSERT_TRUE(writeRegistryText(user, key, "Path", "C:\\Corvanite Host"));
    EXPECT_EQ(readRegistryText(user, key, "Path"), "C:\\Corvanite Host");
    ASSERT_TRUE(writeRegistryText(user, key, "Path", "1.2"));
    EXPECT_EQ(readRegistryText(user, key, "Path"), "1.2");
}

TEST_F(Registry, WrittenCyrillicTextReadsBackTheSame) {
    const std::string path = "C:/" + cyrillicText;
    ASSERT_TRUE(writeRegistryText(user, key, "Path", path));
    EXPECT_EQ(readRegistryText(user, key, "Path"), path);
}

TEST_F(Registry, LettersOutsideCodePage1251ReadBackAsQuestionMarks) {
    ASSERT_TRUE(writeRegistryText(user, key, "Path", "a\xE4\xB8\xAD\xE6\x96\x87z")); // a中文z
    EXPECT_EQ(readRegistryText(user, key, "Path"), "a??z");
}

TEST_F(Registry, DwordOfOneReadsAsFourBytes) {
    setTestDwordValue(key, "ProxyEnable", 1);
    EXPECT_EQ(readRegistryBytes(user, key, "ProxyEnable"), (Bytes{0x01, 0x00, 0x00, 0x00}));
}

TEST_F(Registry, ValueWithNoDataReadsAsEngagedEmptyText) {
    setTestBinaryValue(key, "Empty", {});
    EXPECT_EQ(readRegistryText(user, key, "Empty"), std::string());
    EXPECT_EQ(readRegistryBytes(user, key, "Empty"), Bytes{});
}

TEST_F(Registry, TextEndsAtFirstZeroByte) {
    setTestBinaryValue(key, "Zero", {'a', 0xC6, 0, 'b'});
    EXPECT_EQ(readRegistryText(user, key, "Zero"), "a\xD0\x96"); // aЖ
}

TEST_F(Registry, EmptyTextIsWrittenAndReadAsEmpty) {
    ASSERT_TRUE(writeRegistryText(user, key, "Language", ""));
    EXPECT_EQ(readRegistryText(user, key, "Language"), std::string());
}

TEST_F(Registry, UnnamedValueIsAValueOfItsOwn) {
    ASSERT_TRUE(writeRegistryText(user, key, "", "default"));
    ASSERT_TRUE(writeRegistryText(user, key, "Named", "named"));
    EXPECT_EQ(readRegistryText(user, key, ""), "default");
    EXPECT_EQ(readRegistryText(user, key, "Named"), "named");
}
