#include "profiles/ShownProfileName.h"

#include "foundation/RandomText.h"
#include "foundation/text/Text.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(ShownProfileNameTest, AnOrdinaryNameStaysAsItIs) {
    for (const std::string_view name :
         {"Work", "Büro & Co.", "עבודה", "العمل 2", "👩‍👩‍👧 family"}) {
        EXPECT_EQ(shownProfileName(name), name);
        EXPECT_FALSE(isBlankProfileName(name));
    }
}

TEST(ShownProfileNameTest, LineEndsAndControlsBecomeOneSpace) {
    EXPECT_EQ(shownProfileName("Work\r\n\tand\x1Bplay\u2028"), "Work and play");
}

TEST(ShownProfileNameTest, ANameOfWhichNothingCanBeSeenIsBlank) {
    for (const std::string& name :
         {std::string{}, std::string{" \t\u00A0\n"}, std::string{"\u200B"}, std::string{"\x01\x7F"},
          std::string(3, '\0'), repeated("\x1F", 500)}) {
        EXPECT_TRUE(isBlankProfileName(name));
        EXPECT_EQ(shownProfileName(name), "New profile");
    }
    EXPECT_FALSE(isBlankProfileName(repeated("\x1F", 500) + "x"));
    EXPECT_EQ(shownProfileName(repeated("\x1F", 500) + "x"), "x");
}

TEST(ShownProfileNameTest, AVeryLongNameIsCut) {
    EXPECT_EQ(shownProfileName(repeated("ä", 60)), repeated("ä", 60));
    EXPECT_EQ(shownProfileName(repeated("ä", 61)), repeated("ä", 60) + "…");
}

TEST(ShownProfileNameTest, AnyBytesGiveALineOfSomething) {
    RandomText random{8200};
    for (int time = 0; time < 2000; ++time) {
        const std::string name = time % 2 == 0 ? random.bytes(200) : random.text(90);

        const std::string shown = shownProfileName(name);

        ASSERT_TRUE(isWellFormed(shown));
        ASSERT_FALSE(trimmed(shown, TrimSet::whitespacesAndNewlines).empty());
        ASSERT_EQ(shown.find_first_of(std::string_view{"\0\n\r\t", 4}), std::string::npos);
        ASSERT_LE(shown.size(), 4U * 61U);
    }
}

}  // namespace
}  // namespace orvu
