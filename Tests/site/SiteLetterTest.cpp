#include "site/icons/SiteLetter.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(SiteLetterTest, TheFirstCharacterOfTheHostAsGivenStandsInUpperCase) {
    EXPECT_EQ(siteLetter("gnu.org"), "G");
    EXPECT_EQ(siteLetter("www.gnu.org"), "W");
    EXPECT_EQ(siteLetter("1.example"), "1");
    EXPECT_EQ(siteLetter("izmir.example"), "I");
    EXPECT_EQ(siteLetter("e\u0301t\u00E9.example"), "E\u0301");
    EXPECT_EQ(siteLetter("日本.example"), "日");
}

TEST(SiteLetterTest, AnEmptyHostIsAPlus) { EXPECT_EQ(siteLetter(""), "+"); }

TEST(SiteLetterTest, ABrokenHostHasAReplacementCharacter) {
    EXPECT_EQ(siteLetter("\xFF"), "\uFFFD");
}

}  // namespace
}  // namespace orvu
