#include "shell/WindowPlacement.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(WindowPlacementTest, AWindowBeginsAt1280By820AndIsNeverSmallerThan900By560) {
    EXPECT_EQ(WindowFrame{}.size, (Size{1280, 820}));
    EXPECT_EQ(WindowPlacement::minimumSize, (Size{900, 560}));
}

TEST(WindowPlacementTest, WindowsCascade28PointsRightAndDown) {
    EXPECT_EQ(WindowPlacement::cascaded({100, 50}), (Point{128, 78}));
    EXPECT_EQ(WindowPlacement::cascaded({-40, 0}), (Point{-12, 28}));
}

TEST(WindowPlacementTest, TheButtonsStandCentredInTheBar20PointsApart) {
    using Origins = std::array<Point, 3>;

    EXPECT_EQ(WindowPlacement::windowButtonOrigins(14), (Origins{{{20, 19}, {40, 19}, {60, 19}}}));
    EXPECT_EQ(WindowPlacement::windowButtonOrigins(15), (Origins{{{20, 19}, {40, 19}, {60, 19}}}));
    EXPECT_EQ(WindowPlacement::windowButtonOrigins(52), (Origins{{{20, 0}, {40, 0}, {60, 0}}}));
    EXPECT_EQ(WindowPlacement::windowButtonOrigins(55), (Origins{{{20, -2}, {40, -2}, {60, -2}}}));
}

TEST(WindowPlacementTest, AFrameIsReadAsItWasWritten) {
    for (const WindowFrame& frame :
         {WindowFrame{}, WindowFrame{{900, 560}, false}, WindowFrame{{1600, 1000}, true},
          WindowFrame{{16384, 16384}, true}}) {
        EXPECT_EQ(WindowFrame::parse(frame.string()), frame);
    }
    EXPECT_EQ((WindowFrame{{1600, 1000}, true}).string(), "1600 1000 maximized");
}

TEST(WindowPlacementTest, ASizeOutOfReasonIsHeldWithinTheLimits) {
    EXPECT_EQ(WindowFrame::parse("1 2"), (WindowFrame{{900, 560}, false}));
    EXPECT_EQ(WindowFrame::parse("-1280 -820"), (WindowFrame{{900, 560}, false}));
    EXPECT_EQ(WindowFrame::parse("2147483647 99999 maximized"),
              (WindowFrame{{16384, 16384}, true}));
}

TEST(WindowPlacementTest, AnyOtherTextIsNoFrame) {
    for (const std::string_view text :
         {"", " ", "1280", "1280 ", "1280x820", "1280 820 ", "1280 820 min", "1280  820",
          " 1280 820", "1280 820maximized", "+1280 820", "99999999999 820", "1280 820.5", "a b",
          "1280 820 maximized "}) {
        EXPECT_EQ(WindowFrame::parse(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace orvu
