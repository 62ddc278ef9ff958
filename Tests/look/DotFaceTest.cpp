#include "look/DotFace.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

namespace orvu {
namespace {

constexpr auto shown = DotFaceModel::fullyRevealed;

/// The face as text: '#' a lit dot, 'o' one in the accent colour, '.' a dark one.
std::string picture(const DotFaceModel::Cells& cells) {
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i % DotFaceModel::columns == 0) text += '\n';
        text += cells[i].accent ? 'o' : cells[i].opacity == 0.07 ? '.' : '#';
    }
    return text;
}

std::string picture(Mood mood, double t, int lookX = 0, double reveal = shown) {
    return picture(DotFaceModel::cells(mood, t, lookX, reveal));
}

std::string row(const std::string& face, int index) {
    return face.substr(1 + static_cast<std::size_t>(index) * (DotFaceModel::columns + 1),
                       DotFaceModel::columns);
}

TEST(DotFaceTest, EveryMoodAtEveryTimeGivesEachDotAnOpacityOfItsKind) {
    std::mt19937 chance{5};
    std::uniform_real_distribution<double> time{0, 900000};
    std::uniform_int_distribution<int> look{-9, 9};
    std::uniform_real_distribution<double> reveal{0, 30};
    for (int round = 0; round < 500; ++round) {
        for (const Mood mood : allMoods) {
            const auto cells =
                DotFaceModel::cells(mood, time(chance), look(chance), reveal(chance));

            ASSERT_EQ(cells.size(), 143U);
            const double base = mood == Mood::sleepy ? 0.35 : 0.55;
            for (const DotCell& cell : cells) {
                if (cell.accent) {
                    ASSERT_EQ(cell.opacity, 1);
                } else if (cell.opacity != 0.07) {
                    ASSERT_GE(cell.opacity, base);
                    ASSERT_LE(cell.opacity, base + 0.45);
                }
            }
        }
    }
}

TEST(DotFaceTest, AnIdleFaceLooksAhead) {
    EXPECT_EQ(picture(Mood::idle, 2), R"(
.............
...#######...
..#########..
.###########.
####.###.####
####.###.####
#############
#############
.###########.
..#########..
...#######...)");
}

TEST(DotFaceTest, ABlinkLeavesTheLowEyeRowForTwoTicksInThirtyEight) {
    EXPECT_EQ(picture(Mood::idle, 0), R"(
.............
...#######...
..#########..
.###########.
#############
####.###.####
#############
#############
.###########.
..#########..
...#######...)");
    EXPECT_EQ(row(picture(Mood::idle, 1.99), 4), "#############");
    EXPECT_EQ(row(picture(Mood::idle, 37.99), 4), "####.###.####");
    EXPECT_EQ(row(picture(Mood::idle, 38), 4), "#############");
}

TEST(DotFaceTest, TheHeadBreathes) {
    EXPECT_EQ(row(picture(Mood::idle, 2), 0), ".............");
    EXPECT_EQ(row(picture(Mood::idle, 13), 0), ".....###.....");
}

TEST(DotFaceTest, AHappyFaceHasArcsAndCheeksAndNeverBlinks) {
    const std::string face = R"(
.............
...#######...
..#########..
.###########.
####.###.####
###.#.#.#.###
##o#######o##
#############
.###########.
..#########..
...#######...)";
    EXPECT_EQ(picture(Mood::happy, 0), face);
    EXPECT_EQ(picture(Mood::happy, 2), face);
}

TEST(DotFaceTest, MusicMovesEyesCheeksOutlineAndWaveTogether) {
    EXPECT_EQ(picture(Mood::music, 3), R"(
.............
......#......
...#######...
..#########..
.###########.
####.###.####
###.#.#.#.###
##o#######o##
#############
.###########.
..#########..)");

    const auto moved = DotFaceModel::cells(Mood::music, 3, 0, shown);
    const auto still = DotFaceModel::cells(Mood::happy, 3, 0, shown);
    for (std::size_t i = 0; i + DotFaceModel::columns < still.size(); ++i) {
        EXPECT_EQ(moved[i + DotFaceModel::columns], still[i]) << i;
    }
}

TEST(DotFaceTest, MusicMovesUpAsWell) {
    // sin(0.55 * 9) * 0.75 is -0.73.
    EXPECT_EQ(row(picture(Mood::music, 9), 3), "####.###.####");
    EXPECT_EQ(row(picture(Mood::music, 9), 5), "##o#######o##");
}

TEST(DotFaceTest, ASleepyFaceNeverOpensItsEyes) {
    for (double t = 0; t < 80; t += 0.5) {
        const std::string face = picture(Mood::sleepy, t);

        ASSERT_EQ(row(face, 4), "#############") << t;
        ASSERT_EQ(row(face, 5), "###...#...###") << t;
    }
}

TEST(DotFaceTest, ASurprisedFaceHasAnOpenMouth) {
    const std::string face = picture(Mood::surprised, 2);

    EXPECT_EQ(row(face, 4), "####.###.####");
    EXPECT_EQ(row(face, 7), "######.######");
    EXPECT_EQ(row(face, 8), ".#####.#####.");
}

TEST(DotFaceTest, ATalkingMouthOpensForTwoTicksInFour) {
    const std::string open = picture(Mood::talking, 4);
    EXPECT_EQ(row(open, 7), "#####...#####");
    EXPECT_EQ(row(open, 8), ".#####.#####.");

    const std::string closed = picture(Mood::talking, 6);
    EXPECT_EQ(row(closed, 7), "######.######");
    EXPECT_EQ(row(closed, 8), ".###########.");
    EXPECT_EQ(row(closed, 4), "####.###.####");
}

TEST(DotFaceTest, LookingRightMovesBothEyesAndTheirBlink) {
    EXPECT_EQ(row(picture(Mood::idle, 2, 1), 4), "#####.###.###");
    EXPECT_EQ(row(picture(Mood::idle, 2, 1), 5), "#####.###.###");
    EXPECT_EQ(row(picture(Mood::idle, 0, 1), 5), "#####.###.###");
    EXPECT_EQ(row(picture(Mood::idle, 0, 1), 4), "#############");
    EXPECT_EQ(row(picture(Mood::happy, 0, 1), 5), "####.#.#.#.##");
}

TEST(DotFaceTest, ListeningAndCuriousLookRightWhateverTheGaze) {
    for (const int look : {-3, 0, 5}) {
        EXPECT_EQ(row(picture(Mood::listening, 2, look), 4), "#####.###.###");
        EXPECT_EQ(row(picture(Mood::listening, 2, look), 5), "#####.###.###");
        EXPECT_EQ(row(picture(Mood::curious, 2, look), 3), ".####.###.##.");
        EXPECT_EQ(row(picture(Mood::curious, 2, look), 4), "#####.###.###");
        EXPECT_EQ(row(picture(Mood::curious, 2, look), 5), "#############");
    }
}

TEST(DotFaceTest, ThinkingLooksLeftAndUpWhateverTheGaze) {
    for (const int look : {-3, 0, 5}) {
        EXPECT_EQ(row(picture(Mood::thinking, 2, look), 3), ".##.###.####.");
        EXPECT_EQ(row(picture(Mood::thinking, 2, look), 4), "###.###.#####");
        EXPECT_EQ(row(picture(Mood::thinking, 0, look), 3), ".###########.");
        EXPECT_EQ(row(picture(Mood::thinking, 0, look), 4), "###.###.#####");
    }
}

TEST(DotFaceTest, ARingRunsOutwardAndFeaturesStayDarkInIt) {
    EXPECT_EQ(picture(Mood::idle, 2, 0, 3), R"(
.............
.............
.............
.....ooo.....
.....o#o.....
.....###.....
....o###o....
....oo#oo....
.....ooo.....
.............
.............)");
}

TEST(DotFaceTest, NothingShowsAsARevealBegins) {
    for (const Mood mood : allMoods) {
        EXPECT_EQ(picture(mood, 2, 0, 0).find_first_of("#o"), std::string::npos);
    }
}

TEST(DotFaceTest, ARevealOfTwentyDotsHasNoRing) {
    EXPECT_EQ(picture(Mood::idle, 2, 0, 20), picture(Mood::idle, 2));
}

TEST(DotFaceTest, ALitDotFollowsTheWave) {
    const auto at = [](Mood mood, double t, std::size_t y, std::size_t c) {
        return DotFaceModel::cells(mood, t, 0, shown)[y * DotFaceModel::columns + c].opacity;
    };

    // sin(-1.6) is -0.9995736, sin(2.4) is 0.6754632, sin(-1.36) is -0.9778646.
    EXPECT_NEAR(at(Mood::idle, 0, 5, 6), 0.5500959, 1e-7);
    EXPECT_NEAR(at(Mood::idle, 0, 6, 0), 0.9269792, 1e-7);
    EXPECT_NEAR(at(Mood::sleepy, 2, 5, 6), 0.3549805, 1e-7);
}

TEST(DotFaceTest, MoodsKeepTheirNamesAndOrder) {
    std::string names;
    for (const Mood mood : allMoods) names += std::string{rawValue(mood)} + " ";

    EXPECT_EQ(names, "idle happy music sleepy listening thinking surprised talking curious ");
}

TEST(DotFaceTest, AReactionEndsByItself) {
    const MoodReaction reaction{Mood::surprised, Date{100}};

    EXPECT_EQ(effectiveMood(Mood::idle, reaction, Date{99.9}), Mood::surprised);
    EXPECT_EQ(effectiveMood(Mood::idle, reaction, Date{100}), Mood::idle);
    EXPECT_EQ(effectiveMood(Mood::idle, reaction, Date{500}), Mood::idle);
    EXPECT_EQ(effectiveMood(Mood::sleepy, std::nullopt, Date{0}), Mood::sleepy);
}

TEST(DotFaceTest, ASecondHasNineTicksAndTheyStaySmall) {
    EXPECT_DOUBLE_EQ(ticks(Date{2}), 18);
    EXPECT_DOUBLE_EQ(ticks(Date{800000003}), 27);
}

TEST(DotFaceTest, ARevealTakesAboutTwoSeconds) {
    EXPECT_DOUBLE_EQ(revealRadius(Date{10}, Date{10}), 0);
    EXPECT_DOUBLE_EQ(revealRadius(Date{10}, Date{11}), 6.8);
    EXPECT_LT(revealRadius(Date{10}, Date{12.05}), 14);
    EXPECT_EQ(revealRadius(Date{10}, Date{12.06}), shown);
}

TEST(DotFaceTest, ARevealInTheFutureOrNoneShowsTheWholeFace) {
    EXPECT_EQ(revealRadius(Date{10}, Date{9.99}), shown);
    EXPECT_EQ(revealRadius(std::nullopt, Date{9}), shown);
}

}  // namespace
}  // namespace orvu
