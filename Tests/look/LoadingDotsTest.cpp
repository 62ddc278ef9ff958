#include "look/drawing/LoadingDots.h"

#include <gtest/gtest.h>

#include <cmath>

namespace orvu {
namespace {

TEST(LoadingDotsTest, LitPartGrowsWithTheLoad) {
    const LoadingDots none{.count = 60, .progress = 0};
    const LoadingDots half{.count = 60, .progress = 0.5};
    const LoadingDots whole{.count = 60, .progress = 1};

    EXPECT_TRUE(none.isLit(0));
    EXPECT_FALSE(none.isLit(1));
    EXPECT_TRUE(half.isLit(30));
    EXPECT_FALSE(half.isLit(31));
    EXPECT_TRUE(whole.isLit(59));
}

TEST(LoadingDotsTest, UnlitDotIsFaintAtAnyTime) {
    const LoadingDots dots{.count = 10, .progress = 0.2};

    for (double time = 0; time < 3; time += 0.1) EXPECT_EQ(dots.opacity(3, time), 0.12);
}

TEST(LoadingDotsTest, WaveRunsAlongTheLitDots) {
    const LoadingDots dots{.count = 60, .progress = 1};

    EXPECT_DOUBLE_EQ(dots.opacity(0, 0), 0.7);
    EXPECT_DOUBLE_EQ(dots.opacity(4, 1), (std::sin(6 - 1.4) / 2 + 0.5) * 0.6 + 0.4);
    // What the first dot shows, each dot shows a little later.
    EXPECT_NEAR(dots.opacity(20, 2 + 0.35 * 20 / 6), dots.opacity(0, 2), 1e-12);
    for (int dot = 0; dot < 60; ++dot) {
        EXPECT_GE(dots.opacity(dot, 1.7), 0.4);
        EXPECT_LE(dots.opacity(dot, 1.7), 1.0);
    }
}

TEST(LoadingDotsTest, StandingStillEachLitDotIsAlike) {
    const LoadingDots dots{.count = 10, .progress = 0.45};

    for (int dot = 0; dot < 5; ++dot) EXPECT_EQ(dots.stillOpacity(dot), 0.7);
    for (int dot = 5; dot < 10; ++dot) EXPECT_EQ(dots.stillOpacity(dot), 0.12);
}

TEST(LoadingDotsTest, DotsFillTheWidthEvenly) {
    const LoadingDots dots{.count = 3};

    EXPECT_EQ(dots.centre(0, 100), 1);
    EXPECT_EQ(dots.centre(1, 100), 50);
    EXPECT_EQ(dots.centre(2, 100), 99);
}

TEST(LoadingDotsTest, NoDotsAndOneDotAreFine) {
    EXPECT_FALSE(LoadingDots{.count = 0}.isLit(1));
    EXPECT_EQ((LoadingDots{.count = 1}.centre(0, 100)), 1);
}

}  // namespace
}  // namespace orvu
