#include "assistant/ThinkingDots.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvu {
namespace {

TEST(ThinkingDotsTest, AWaveRunsThroughTheDotsBetweenAQuarterAndFull) {
    double least = 1;
    double most = 0;
    for (int step = 0; step < 1000; ++step) {
        const double opacity = ThinkingDots::opacity(step % ThinkingDots::count, step * 0.01);
        least = std::min(least, opacity);
        most = std::max(most, opacity);
    }
    EXPECT_NEAR(least, 0.25, 0.001);
    EXPECT_NEAR(most, 1, 0.001);
}

TEST(ThinkingDotsTest, EachDotFollowsTheOneBeforeIt) {
    EXPECT_DOUBLE_EQ(ThinkingDots::opacity(0, 0), 0.625);
    EXPECT_NEAR(ThinkingDots::opacity(1, 0.18), ThinkingDots::opacity(0, 0), 1e-12);
    EXPECT_NEAR(ThinkingDots::opacity(2, 0.36), ThinkingDots::opacity(0, 0), 1e-12);
}

}  // namespace
}  // namespace orvu
