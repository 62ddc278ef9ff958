#include "site/icons/SiteColor.h"

#include "foundation/RandomText.h"
#include "look/Desk.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(SiteColorTest, ThePaletteHasSixColoursInThisOrder) {
    EXPECT_EQ(SiteColor::palette, (std::array<Color, 6>{{{0x5C, 0xB2, 0xFF},
                                                         {0xA5, 0x94, 0xFF},
                                                         {0xFF, 0xB5, 0x47},
                                                         {0xFF, 0x8A, 0xD8},
                                                         {0x6C, 0xF0, 0xC2},
                                                         {0x9C, 0xD3, 0xFF}}}));
}

TEST(SiteColorTest, TheEmptyNameHasTheColourOfAHairline) {
    EXPECT_EQ(SiteColor::of(""), Desk::line);
    EXPECT_EQ(Desk::line, (Color{230, 232, 235}));
}

TEST(SiteColorTest, TheSumOfTheCodePointsChoosesTheColour) {
    EXPECT_EQ(SiteColor::of("a"), SiteColor::palette[97 % 6]);
    EXPECT_EQ(SiteColor::of("ab"), SiteColor::palette[(97 + 98) % 6]);
    EXPECT_EQ(SiteColor::of("é"), SiteColor::palette[0xE9 % 6]);
    EXPECT_EQ(SiteColor::of("e\u0301"), SiteColor::palette[(101 + 0x301) % 6]);
    EXPECT_EQ(SiteColor::of("👩"), SiteColor::palette[0x1F469 % 6]);
    EXPECT_EQ(SiteColor::of(std::string_view{"\0", 1}), SiteColor::palette[0]);
}

TEST(SiteColorTest, TheOrderOfTheLettersDoesNotMatter) {
    EXPECT_EQ(SiteColor::of("example.com"), SiteColor::of("moc.elpmaxe"));
}

TEST(SiteColorTest, LongNamesDoNotOverflow) {
    constexpr std::size_t count = 100000;

    EXPECT_EQ(SiteColor::of(repeated("\U0010FFFF", count)),
              SiteColor::palette[(0x10FFFFULL * count) % 6]);
    EXPECT_EQ(SiteColor::of(repeated("a", count)), SiteColor::palette[(97ULL * count) % 6]);
}

}  // namespace
}  // namespace orvu
