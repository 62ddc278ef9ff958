#include "look/motion/BlurFade.h"
#include "look/controls/IconButtonStyle.h"
#include "look/controls/PillButtonStyle.h"
#include "profiles/ProfileLook.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

/// What the better of the two label colours reaches on the ground that is worst for both.
constexpr double readable = 4.3;

TEST(ContrastTest, BlackOnWhiteIsTheGreatest) {
    EXPECT_NEAR(contrastRatio({0, 0, 0}, {255, 255, 255}), 21, 1e-9);
    EXPECT_NEAR(contrastRatio({255, 255, 255}, {0, 0, 0}), 21, 1e-9);
    EXPECT_NEAR(contrastRatio({8, 90, 200}, {8, 90, 200}), 1, 1e-9);
}

TEST(ContrastTest, KnownRatios) {
    EXPECT_NEAR(contrastRatio(Color::hex(0x777777), Color::hex(0xFFFFFF)), 4.48, 0.005);
    EXPECT_NEAR(contrastRatio(Color::hex(0xFF0000), Color::hex(0xFFFFFF)), 4.00, 0.005);
    EXPECT_NEAR(contrastRatio(Color::hex(0x0000FF), Color::hex(0xFFFFFF)), 8.59, 0.005);
}

TEST(ContrastTest, BlendingMixesByOpacity) {
    EXPECT_EQ(blend({{200, 100, 0}, 0.5}, {0, 100, 200}), (Color{100, 100, 100}));
    EXPECT_EQ(blend({{200, 100, 0}, 0}, {1, 2, 3}), (Color{1, 2, 3}));
    EXPECT_EQ(blend({{200, 100, 0}, 1}, {1, 2, 3}), (Color{200, 100, 0}));
}

TEST(ContrastTest, ALabelIsReadableOnAnyGround) {
    for (std::uint32_t rgb = 0; rgb < 0x1000000; rgb += 4099) {
        const Color ground = Color::hex(rgb);

        ASSERT_GE(contrastRatio(labelColor(ground), ground), readable) << rgb;
    }
}

TEST(AccentKeyTest, TheDefaultIsTheSky) {
    EXPECT_EQ(AccentKey::defaultValue, (Color{92, 178, 255}));
}

TEST(PillButtonStyleTest, EachKindHasItsGround) {
    EXPECT_EQ((PillButtonStyle{PillButtonStyle::Kind::prominent, {1, 2, 3}}.ground()),
              (Paint{{1, 2, 3}, 1}));
    EXPECT_EQ((PillButtonStyle{PillButtonStyle::Kind::plain, {1, 2, 3}}.ground()),
              (Paint{{255, 255, 255}, 0.09}));
    EXPECT_EQ((PillButtonStyle{PillButtonStyle::Kind::quiet, {1, 2, 3}}.ground().opacity), 0);
}

TEST(PillButtonStyleTest, ALabelIsReadableOnEachProfilesAccent) {
    for (const ProfileLook& look : ProfileLook::all) {
        const PillButtonStyle style{PillButtonStyle::Kind::prominent, look.color};

        EXPECT_GE(contrastRatio(style.label(), look.color), readable)
            << std::string_view{look.name};
    }
}

TEST(PillButtonStyleTest, ALabelIsDarkOnABrightAccentAndWhiteOtherwise) {
    using enum PillButtonStyle::Kind;

    EXPECT_EQ((PillButtonStyle{prominent, Desk::sky}.label()), Desk::notchInk);
    EXPECT_EQ((PillButtonStyle{prominent, Desk::blue}.label()), Desk::white);
    EXPECT_EQ((PillButtonStyle{plain, Desk::sky}.label()), Desk::white);
    EXPECT_EQ((PillButtonStyle{quiet, Desk::sky}.label()), Desk::white);
}

TEST(IconButtonStyleTest, AnActiveSymbolStandsOutFromTheAccent) {
    for (const ProfileLook& look : ProfileLook::all) {
        const IconButtonStyle style{.active = true, .accent = look.color};

        EXPECT_EQ(style.ground(), Paint{look.color});
        EXPECT_GE(contrastRatio(style.symbol().color, look.color), readable)
            << std::string_view{look.name};
    }
}

TEST(IconButtonStyleTest, AnInactiveSymbolIsWhiteOnAHintOfWhite) {
    const IconButtonStyle style{};

    EXPECT_EQ(style.ground(), (Paint{{255, 255, 255}, 0.07}));
    EXPECT_EQ(style.symbol(), (Paint{{255, 255, 255}, 0.8}));
}

TEST(BlurFadeTest, ContentIsThereOnlyWithoutABlur) {
    EXPECT_EQ(BlurFade{10}.opacity(), 0);
    EXPECT_EQ(BlurFade{0}.opacity(), 1);
}

TEST(BlurFadeTest, ContentComesOutOfTheBlurAsItFadesIn) {
    const BlurFade fade{10};

    EXPECT_EQ(fade.at(0).radius, 10);
    EXPECT_EQ(fade.at(0).opacity, 0);
    EXPECT_EQ(fade.at(0.25).radius, 7.5);
    EXPECT_EQ(fade.at(0.25).opacity, 0.25);
    EXPECT_EQ(fade.at(1).radius, 0);
    EXPECT_EQ(fade.at(1).opacity, 1);
}

TEST(BlurFadeTest, ASwingBeyondTheEndsShowsNothingOfItself) {
    EXPECT_EQ(BlurFade{10}.at(1.2).radius, 0);
    EXPECT_EQ(BlurFade{10}.at(1.2).opacity, 1);
    EXPECT_EQ(BlurFade{10}.at(-0.2).opacity, 0);
    EXPECT_EQ(BlurFade{0}.at(0.5).opacity, 1);
}

}  // namespace
}  // namespace orvu
