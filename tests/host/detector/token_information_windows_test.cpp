#include "host/detector/token_information_windows.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <stdexcept>
#include <string>

#include "foundation/text.h"
#include "host/detector/current_user.h"

namespace {

TEST(TokenInformation, UserOfThisProcessIsTheCurrentUser) {
    const std::vector<std::uint8_t> bytes = detector::tokenInformation(TokenUser, 0);
    ASSERT_GE(bytes.size(), sizeof(TOKEN_USER));
    const auto* user = reinterpret_cast<const TOKEN_USER*>(bytes.data());
    EXPECT_TRUE(IsValidSid(user->User.Sid));
    EXPECT_TRUE(detector::isCurrentUserProcess(GetCurrentProcessId()));
}

TEST(TokenInformation, ProcessThatDoesNotExistRaisesTheSystemsCode) {
    try {
        detector::tokenInformation(TokenUser, 0xFFFFFFF0);
        FAIL() << "no exception";
    } catch (const std::runtime_error& failure) {
        const std::string text = failure.what();
        ASSERT_FALSE(text.empty());
        EXPECT_EQ(text.find_first_not_of("0123456789"), std::string::npos) << text;
    }
}

} // namespace
