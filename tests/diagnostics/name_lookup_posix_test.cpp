#include "diagnostics/name_lookup.h"

#include <gtest/gtest.h>

TEST(NameLookupPosix, LocalhostResolvesThroughTheCLibrary) {
    const std::vector<std::string> addresses = detector::resolveHost("localhost");
    ASSERT_FALSE(addresses.empty());
    EXPECT_EQ(addresses.front().rfind("127.", 0), 0u);
}
