#include "look/motion/SlidingPlaces.h"

#include <gtest/gtest.h>

#include <random>

namespace orvu {
namespace {

using namespace std::chrono_literals;

TEST(SlidingPlacesTest, TheFirstLinesAreInTheirPlacesAtOnce) {
    SlidingPlaces places{Motion::snappy};

    places.moveTo({{"a", 0}, {"b", 40}}, 5s);

    EXPECT_FALSE(places.isMoving(5s));
    EXPECT_EQ(places.at("b", 5s).offset, 0);
    EXPECT_EQ(places.at("b", 5s).opacity, 1);
}

TEST(SlidingPlacesTest, ALineSlidesFromWhereItWasToWhereItBelongs) {
    SlidingPlaces places{Motion::snappy};
    places.moveTo({{"a", 0}, {"b", 40}}, 5s);

    places.moveTo({{"b", 0}}, 6s);

    EXPECT_TRUE(places.isMoving(6s));
    EXPECT_DOUBLE_EQ(places.at("b", 6s).offset, 40);
    EXPECT_EQ(places.at("b", 6s).opacity, 1);
    const double onItsWay = places.at("b", 6.05s).offset;
    EXPECT_GT(onItsWay, 0);
    EXPECT_LT(onItsWay, 40);
    EXPECT_FALSE(places.isMoving(8s));
    EXPECT_EQ(places.at("b", 8s).offset, 0);
}

TEST(SlidingPlacesTest, ANewLineFadesInWhereItBelongs) {
    SlidingPlaces places{Motion::snappy};
    places.moveTo({{"a", 0}}, 5s);

    places.moveTo({{"a", 0}, {"b", 40}}, 6s);

    EXPECT_EQ(places.at("b", 6s).opacity, 0);
    EXPECT_EQ(places.at("b", 6s).offset, 0);
    EXPECT_EQ(places.at("a", 6s).opacity, 1);
    EXPECT_GT(places.at("b", 6.1s).opacity, 0.3);
    EXPECT_EQ(places.at("b", 8s).opacity, 1);
}

TEST(SlidingPlacesTest, TheSameLinesAgainDisturbNoMotion) {
    SlidingPlaces places{Motion::snappy};
    places.moveTo({{"a", 40}}, 5s);
    places.moveTo({{"a", 0}}, 6s);
    const double before = places.at("a", 6.1s).offset;

    places.moveTo({{"a", 0}}, 6.05s);

    EXPECT_EQ(places.at("a", 6.1s).offset, before);
}

TEST(SlidingPlacesTest, ALineThatCameBackIsANewOne) {
    SlidingPlaces places{Motion::snappy};
    places.moveTo({{"a", 0}, {"b", 40}}, 5s);
    places.moveTo({{"a", 0}}, 6s);

    places.moveTo({{"a", 0}, {"b", 80}}, 6.1s);

    EXPECT_EQ(places.at("b", 6.1s).offset, 0);
    EXPECT_EQ(places.at("b", 6.1s).opacity, 0);
}

TEST(SlidingPlacesTest, LinesThatFollowAnEmptyListAreInTheirPlacesAtOnce) {
    SlidingPlaces places{Motion::snappy};
    places.moveTo({{"a", 0}}, 5s);
    places.moveTo({}, 6s);
    EXPECT_FALSE(places.isMoving(6s));

    places.moveTo({{"b", 0}}, 7s);

    EXPECT_EQ(places.at("b", 7s).opacity, 1);
}

TEST(SlidingPlacesTest, FinishingPutsEveryLineInItsPlace) {
    SlidingPlaces places{Motion::snappy};
    places.moveTo({{"a", 0}}, 5s);
    places.moveTo({{"a", 300}, {"b", 0}}, 6s);

    places.finish();

    EXPECT_FALSE(places.isMoving(6s));
    EXPECT_EQ(places.at("a", 6s).offset, 0);
    EXPECT_EQ(places.at("b", 6s).opacity, 1);
}

TEST(SlidingPlacesTest, NothingJumpsHoweverOftenTheLinesChange) {
    std::mt19937 chance{11};
    SlidingPlaces places{Motion::snappy};
    Seconds now{1};
    std::vector<SlidingPlaces::Line> lines{{"a", 0}, {"b", 40}, {"c", 80}, {"d", 120}};
    places.moveTo(lines, now);
    for (int round = 0; round < 2'000; ++round) {
        const Seconds next = now + Seconds{0.001 * static_cast<double>(chance() % 300)};
        std::vector<double> before;
        for (const auto& line : lines) before.push_back(line.y + places.at(line.key, next).offset);

        for (auto& line : lines) line.y = static_cast<double>(chance() % 400);
        places.moveTo(lines, next);

        for (std::size_t i = 0; i < lines.size(); ++i) {
            // What no longer moved visibly may have stood a third of a pixel away.
            EXPECT_NEAR(lines[i].y + places.at(lines[i].key, next).offset, before[i], 0.31);
        }
        now = next;
    }
    EXPECT_FALSE(places.isMoving(now + 10s));
}

}  // namespace
}  // namespace orvu
