#include "shell/pagearea/BrowserSplitPages.h"

#include <gtest/gtest.h>

#include <random>

namespace orvu {
namespace {

TEST(BrowserSplitPagesTest, PairBeginsWithEqualPanes) {
    const BrowserSplitPages split;

    EXPECT_EQ(split.widths(1014), (BrowserSplitPages::Widths{500, 500}));
}

TEST(BrowserSplitPagesTest, BothPanesKeepTheirLeastWidthWhereThereIsRoom) {
    BrowserSplitPages split;

    split.dragTo(0, 800);
    EXPECT_EQ(split.widths(800), (BrowserSplitPages::Widths{260, 526}));
    split.dragTo(800, 800);
    EXPECT_EQ(split.widths(800), (BrowserSplitPages::Widths{526, 260}));
}

TEST(BrowserSplitPagesTest, FirstPaneGivesWayInAVeryNarrowRoom) {
    const BrowserSplitPages split;

    EXPECT_EQ(split.widths(414), (BrowserSplitPages::Widths{140, 260}));
    EXPECT_EQ(split.widths(200), (BrowserSplitPages::Widths{0, 186}));
    EXPECT_EQ(split.widths(3), (BrowserSplitPages::Widths{0, 1}));
}

TEST(BrowserSplitPagesTest, DragPastTheEdgeStopsAtTheLimits) {
    BrowserSplitPages split;

    split.dragTo(-400, 1000);
    EXPECT_EQ(split.fraction(), 0.2);
    split.dragTo(5000, 1000);
    EXPECT_EQ(split.fraction(), 0.8);
}

TEST(BrowserSplitPagesTest, DragCountsFromTheWholeWidth) {
    BrowserSplitPages split;

    split.dragTo(400, 1000);

    EXPECT_EQ(split.fraction(), 0.4);
}

TEST(BrowserSplitPagesTest, DragInNoRoomChangesNothing) {
    BrowserSplitPages split;

    split.dragTo(100, 0);

    EXPECT_EQ(split.fraction(), 0.5);
}

TEST(BrowserSplitPagesTest, KeysStayWithinTheLimits) {
    BrowserSplitPages split;

    split.step(-1);
    EXPECT_DOUBLE_EQ(split.fraction(), 0.45);
    for (int i = 0; i < 20; ++i) split.step(-1);
    EXPECT_EQ(split.fraction(), 0.2);
    for (int i = 0; i < 40; ++i) split.step(+1);
    EXPECT_EQ(split.fraction(), 0.8);
}

TEST(BrowserSplitPagesTest, EndOfThePairForgetsTheDrag) {
    BrowserSplitPages split;
    split.dragTo(300, 1000);

    split.reset();

    EXPECT_EQ(split.fraction(), 0.5);
}

TEST(BrowserSplitPagesTest, PanesAndDividerAlwaysFillTheRoom) {
    std::mt19937 random{7};
    std::uniform_int_distribution<int> width{15, 4000};
    std::uniform_real_distribution<double> x{-500, 4500};

    for (int i = 0; i < 2000; ++i) {
        BrowserSplitPages split;
        const int room = width(random);
        split.dragTo(x(random), room);
        const auto [first, second] = split.widths(room);
        ASSERT_GE(first, 0) << room;
        ASSERT_GE(second, 0) << room;
        ASSERT_EQ(first + BrowserSplitPages::dividerWidth + second, room);
    }
}

}  // namespace
}  // namespace orvu
