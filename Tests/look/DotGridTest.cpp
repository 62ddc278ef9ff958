#include "look/drawing/DotGrid.h"

#include "look/drawing/DottedPaper.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

TEST(DotGridTest, TheFirstDotStandsHalfAPitchFromTheEdges) {
    const auto centres = DottedPaper::grid.centres(45, 25);

    EXPECT_EQ(centres, (std::vector<PathPoint>{{10, 10}, {30, 10}}));
}

TEST(DotGridTest, DotsComeRowAfterRow) {
    const auto centres = DotGrid{}.centres(31, 31);

    EXPECT_EQ(centres, (std::vector<PathPoint>{{10, 10}, {30, 10}, {10, 30}, {30, 30}}));
}

TEST(DotGridTest, ADotOnTheFarEdgeIsNotDrawn) {
    EXPECT_EQ(DotGrid{}.count(10), 0);
    EXPECT_EQ(DotGrid{}.count(10.5), 1);
    EXPECT_EQ(DotGrid{}.count(30), 1);
    EXPECT_EQ(DotGrid{}.count(30.5), 2);
}

TEST(DotGridTest, NoSizeHasNoDots) {
    EXPECT_EQ(DotGrid{}.count(0), 0);
    EXPECT_EQ(DotGrid{}.count(-40), 0);
    EXPECT_TRUE(DotGrid{}.centres(100, 0).empty());
}

TEST(DotGridTest, APositionIsInsideForEachDotAndNotForTheNext) {
    for (double length = 0.5; length < 300; length += 0.5) {
        const int count = DotGrid{}.count(length);
        if (count > 0) {
            EXPECT_LT(10 + 20 * (count - 1), length);
        }
        EXPECT_GE(10 + 20 * count, length);
    }
}

}  // namespace
}  // namespace orvu
