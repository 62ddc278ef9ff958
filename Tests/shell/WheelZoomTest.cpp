#include "shell/pagearea/WheelZoom.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(WheelZoomTest, EachNotchAwayIsAStepLargerAndEachTowardsAStepSmaller) {
    WheelZoom zoom;

    EXPECT_EQ(zoom.add(-1), 1);
    EXPECT_EQ(zoom.add(-1), 1);
    EXPECT_EQ(zoom.add(1), -1);
    EXPECT_EQ(zoom.add(3), -3);
}

TEST(WheelZoomTest, SmallPartsAddUpToSteps) {
    WheelZoom zoom;

    EXPECT_EQ(zoom.add(-0.5), 0);
    EXPECT_EQ(zoom.add(-0.25), 0);
    EXPECT_EQ(zoom.add(-0.5), 1);
    EXPECT_EQ(zoom.add(-0.75), 1);
}

TEST(WheelZoomTest, WhatIsLeftOfTheOtherDirectionIsForgotten) {
    WheelZoom zoom;
    EXPECT_EQ(zoom.add(-0.75), 0);

    EXPECT_EQ(zoom.add(0.5), 0);

    EXPECT_EQ(zoom.add(0.5), -1);
}

TEST(WheelZoomTest, WhatIsLeftIsForgottenAtTheEnd) {
    WheelZoom zoom;
    EXPECT_EQ(zoom.add(-0.75), 0);
    zoom.end();

    EXPECT_EQ(zoom.add(-0.5), 0);
}

}  // namespace
}  // namespace orvu
