#include "look/text/TextDirection.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(TextDirectionTest, FirstLetterWithADirectionDecides) {
    EXPECT_FALSE(runsLeftwards("abc"));
    EXPECT_TRUE(runsLeftwards("שלום"));
    EXPECT_TRUE(runsLeftwards("مرحبا abc"));
    EXPECT_FALSE(runsLeftwards("abc مرحبا"));
    EXPECT_TRUE(runsLeftwards("12, (ש"));
}

TEST(TextDirectionTest, TextWithoutSuchALetterRunsRightwards) {
    EXPECT_FALSE(runsLeftwards(""));
    EXPECT_FALSE(runsLeftwards("123 ,.-"));
    EXPECT_FALSE(runsLeftwards("\xD7"));
}

}  // namespace
}  // namespace orvu
