#include "shell/SplitPages.h"

#include <gtest/gtest.h>

#include <random>

namespace orvu {
namespace {

TEST(SplitPagesTest, PairBeginsWithEqualPanes) {
    const SplitPages split;

    EXPECT_EQ(split.widths(1014), (SplitPages::Widths{500, 500}));
}

TEST(SplitPagesTest, BothPanesKeepTheirLeastWidthWhereThereIsRoom) {
    SplitPages split;

    split.dragTo(0, 800);
    EXPECT_EQ(split.widths(800), (SplitPages::Widths{260, 526}));
    split.dragTo(800, 800);
    EXPECT_EQ(split.widths(800), (SplitPages::Widths{526, 260}));
}

TEST(SplitPagesTest, FirstPaneGivesWayInAVeryNarrowRoom) {
    const SplitPages split;

    EXPECT_EQ(split.widths(414), (SplitPages::Widths{140, 260}));
    EXPECT_EQ(split.widths(200), (SplitPages::Widths{0, 186}));
    EXPECT_EQ(split.widths(3), (SplitPages::Widths{0, 1}));
}

TEST(SplitPagesTest, DragPastTheEdgeStopsAtTheLimits) {
    SplitPages split;

    split.dragTo(-400, 1000);
    EXPECT_EQ(split.fraction(), 0.2);
    split.dragTo(5000, 1000);
    EXPECT_EQ(split.fraction(), 0.8);
}

TEST(SplitPagesTest, DragCountsFromTheWholeWidth) {
    SplitPages split;

    split.dragTo(400, 1000);

    EXPECT_EQ(split.fraction(), 0.4);
}

TEST(SplitPagesTest, DragInNoRoomChangesNothing) {
    SplitPages split;

    split.dragTo(100, 0);

    EXPECT_EQ(split.fraction(), 0.5);
}

TEST(SplitPagesTest, KeysStayWithinTheLimits) {
    SplitPages split;

    split.step(-1);
    EXPECT_DOUBLE_EQ(split.fraction(), 0.45);
    for (int i = 0; i < 20; ++i) split.step(-1);
    EXPECT_EQ(split.fraction(), 0.2);
    for (int i = 0; i < 40; ++i) split.step(+1);
    EXPECT_EQ(split.fraction(), 0.8);
}

TEST(SplitPagesTest, EndOfThePairForgetsTheDrag) {
    SplitPages split;
    split.dragTo(300, 1000);

    split.reset();

    EXPECT_EQ(split.fraction(), 0.5);
}

TEST(SplitPagesTest, PanesAndDividerAlwaysFillTheRoom) {
    std::mt19937 random{7};
    std::uniform_int_distribution<int> width{15, 4000};
    std::uniform_real_distribution<double> x{-500, 4500};

    for (int i = 0; i < 2000; ++i) {
        SplitPages split;
        const int room = width(random);
        split.dragTo(x(random), room);
        const auto [first, second] = split.widths(room);
        ASSERT_GE(first, 0) << room;
        ASSERT_GE(second, 0) << room;
        ASSERT_EQ(first + SplitPages::dividerWidth + second, room);
    }
}

}  // namespace
}  // namespace orvu
