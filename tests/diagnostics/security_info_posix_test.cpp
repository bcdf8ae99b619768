#include "diagnostics/security_info.h"

#include <gtest/gtest.h>

#include "foundation/exceptions.h"

TEST(SecurityInfoPosix, WithoutASecurityCentreTheHealthLibraryIsMissing) {
    EXPECT_THROW(detector::querySecurityInfo(), LoadLibraryError);
}
