#include "ProjectPaths.h"
#include "look/Bloom.h"
#include "look/Desk.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

namespace orvu {
namespace {

constexpr PathRectangle design{0, 0, 1000, 1000};

/// All points of an outline, controls and ends, in their order.
std::vector<PathPoint> points(const BloomPetals::Outline& outline) {
    std::vector<PathPoint> result;
    for (const PathSegment& segment : outline) {
        if (const auto* const move = std::get_if<MoveTo>(&segment)) result.push_back(move->end);
        if (const auto* const curve = std::get_if<CubicTo>(&segment)) {
            result.insert(result.end(), {curve->first, curve->second, curve->end});
        }
    }
    return result;
}

/// The points of each petal: its base, then three of each curve.
constexpr std::size_t petalPoints = 13;

void expectNear(PathPoint point, PathPoint expected, double tolerance) {
    EXPECT_NEAR(point.x, expected.x, tolerance);
    EXPECT_NEAR(point.y, expected.y, tolerance);
}

void expectNear(const std::vector<PathPoint>& all, const std::vector<PathPoint>& expected,
                double tolerance) {
    ASSERT_EQ(all.size(), expected.size());
    for (std::size_t i = 0; i < all.size(); ++i) expectNear(all[i], expected[i], tolerance);
}

PathPoint turned(PathPoint point, PathPoint about, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const double x = point.x - about.x;
    const double y = point.y - about.y;
    return {about.x + x * std::cos(angle) - y * std::sin(angle),
            about.y + x * std::sin(angle) + y * std::cos(angle)};
}

TEST(BloomTest, APetalLiesWhereTheDesignHasIt) {
    const auto all = points(BloomPetals{}.outline(design));

    // The second petal points 16° downwards from the right, and is twisted by 22° more.
    expectNear(all[petalPoints], {521.77, 550.65}, 0.01);
    expectNear(all[petalPoints + 6], {835.40, 795.68}, 0.01);
}

TEST(BloomTest, EachPetalIsMadeOfFourCurvesAndClosed) {
    for (const bool small : {false, true}) {
        const auto outline = BloomPetals{small}.outline(design);

        for (std::size_t petal = 0; petal < outline.size(); petal += 6) {
            const auto* const base = std::get_if<MoveTo>(&outline.at(petal));
            const auto* const last = std::get_if<CubicTo>(&outline.at(petal + 4));
            ASSERT_TRUE(base && last);
            expectNear(last->end, base->end, 1e-9);
            EXPECT_EQ(outline.at(petal + 5), PathSegment(ClosePath{}));
            for (std::size_t curve = 1; curve <= 4; ++curve) {
                EXPECT_TRUE(std::holds_alternative<CubicTo>(outline.at(petal + curve)));
            }
        }
    }
}

TEST(BloomTest, ThePetalsAreOneTurnedByAThirdOfACircle) {
    for (const bool small : {false, true}) {
        const auto all = points(BloomPetals{small}.outline(design));
        const PathPoint centre = BloomMark{small}.hole(design).centre;

        for (std::size_t i = 0; i + petalPoints < all.size(); ++i) {
            expectNear(all[i + petalPoints], turned(all[i], centre, 120), 1e-9);
        }
    }
}

TEST(BloomTest, APetalIsTheSameOnBothSidesOfTheLineToItsTip) {
    for (const bool small : {false, true}) {
        const auto all = points(BloomPetals{small}.outline(design));
        const PathPoint base = all[0];
        const PathPoint tip = all[6];

        for (std::size_t i = 0; i < petalPoints; ++i) {
            const PathPoint mirrored = all[petalPoints - 1 - i];
            const auto along = [&](PathPoint point) {
                return (point.x - base.x) * (tip.x - base.x) +
                       (point.y - base.y) * (tip.y - base.y);
            };
            EXPECT_NEAR(along(all[i]), along(mirrored), 1e-6);
            EXPECT_NEAR(std::hypot(all[i].x - base.x, all[i].y - base.y),
                        std::hypot(mirrored.x - base.x, mirrored.y - base.y), 1e-9);
        }
    }
}

TEST(BloomTest, InARectangleThatIsNoSquareTheMarkKeepsItsProportionsByTheShorterSide) {
    const auto square = points(BloomPetals{}.outline({100, 20, 80, 80}));

    expectNear(points(BloomPetals{}.outline({40, 20, 200, 80})), square, 1e-9);
    expectNear(points(BloomPetals{}.outline({100, -60, 80, 240})), square, 1e-9);
    EXPECT_EQ(BloomMark{}.hole({40, 20, 200, 80}), BloomMark{}.hole({100, 20, 80, 80}));
}

TEST(BloomTest, TwiceTheRectangleGivesTwiceTheMark) {
    std::vector<PathPoint> doubled;
    for (const PathPoint point : points(BloomPetals{.small = true}.outline({3, 5, 40, 60}))) {
        doubled.push_back({2 * point.x, 2 * point.y});
    }

    expectNear(points(BloomPetals{.small = true}.outline({6, 10, 80, 120})), doubled, 1e-9);
}

TEST(BloomTest, ThePetalsOfTheSmallCutStartAtTheCentreAndTheOthersBesideIt) {
    const PathPoint centre = BloomMark{}.hole(design).centre;
    const auto small = points(BloomPetals{.small = true}.outline(design));
    const auto ordinary = points(BloomPetals{}.outline(design));

    for (std::size_t base = 0; base < small.size(); base += petalPoints) {
        expectNear(small[base], centre, 1e-9);
        EXPECT_NEAR(std::hypot(ordinary[base].x - centre.x, ordinary[base].y - centre.y), 6, 1e-9);
    }
}

TEST(BloomTest, TheHoleIsRoundAndHeavierInTheSmallCut) {
    EXPECT_EQ((BloomMark{}.hole(design)), (BloomMark::Circle{{516, 549}, 178}));
    EXPECT_EQ((BloomMark{.small = true}.hole(design)), (BloomMark::Circle{{516, 549}, 220}));
    EXPECT_NEAR((BloomMark{}.hole({0, 0, 132, 132}).diameter), 23.496, 1e-9);
}

TEST(BloomTest, WithoutRoomTheMarkIsOnePoint) {
    for (const PathPoint point : points(BloomPetals{}.outline({7, 8, 0, 0}))) {
        EXPECT_EQ(point, (PathPoint{7, 8}));
    }
    EXPECT_EQ((BloomMark{}.hole({0, 0, -10, 50}).diameter), 0);
}

// --- The program's icon ------------------------------------------------------------------------

std::string icon() {
    std::ifstream file{ProjectPaths::icon};
    return {std::istreambuf_iterator<char>{file}, {}};
}

/// What stands between the first `before` and the next `after`; empty if there is none.
std::string between(const std::string& text, const std::string& before, const std::string& after) {
    const auto at = text.find(before);
    if (at == std::string::npos) return {};
    const auto begin = at + before.size();
    return text.substr(begin, text.find(after, begin) - begin);
}

double number(const std::string& text, const std::string& attribute) {
    return std::stod(between(text, " " + attribute + "=\"", "\""));
}

/// The square in which the icon says that its mark stands.
PathRectangle markInIcon(const std::string& svg) {
    const std::string place = between(svg, "square from (", ".\n");
    std::istringstream numbers{place};
    PathRectangle result;
    numbers >> result.x;
    numbers.ignore(1, ',');
    numbers >> result.y;
    result.width = result.height = std::stod(between(svg, "a side of ", "."));
    return result;
}

/// The points of a path, and its letters in their order.
std::pair<std::vector<PathPoint>, std::string> pathOf(std::string data) {
    std::string letters;
    for (char& c : data) {
        if (c < 'A' || c > 'Z') continue;
        letters += c;
        c = ' ';
    }
    std::vector<PathPoint> all;
    std::istringstream numbers{data};
    for (PathPoint point; numbers >> point.x >> point.y;) all.push_back(point);
    return {all, letters};
}

TEST(ProgramIconTest, ItsPetalsAreThoseOfTheMark) {
    const std::string svg = icon();

    const auto [all, letters] = pathOf(between(svg, " d=\"", "\""));

    EXPECT_EQ(letters, "MCCCCZMCCCCZMCCCCZ");
    expectNear(all, points(BloomPetals{}.outline(markInIcon(svg))), 0.1);
}

TEST(ProgramIconTest, ItsHoleIsThatOfTheMarkInTheColourOfTheGround) {
    const std::string svg = icon();
    const std::string circle = between(svg, "<circle", "/>");
    const auto hole = BloomMark{}.hole(markInIcon(svg));

    expectNear({number(circle, "cx"), number(circle, "cy")}, hole.centre, 0.1);
    EXPECT_NEAR(number(circle, "r"), hole.diameter / 2, 0.1);
    EXPECT_EQ(between(circle, "fill=\"", "\""), "#0b0c0f");
    EXPECT_EQ(between(between(svg, "<rect", "/>"), "fill=\"", "\""), "#0b0c0f");
    EXPECT_EQ(Color::hex(0x0b0c0f), Desk::black);
}

TEST(ProgramIconTest, ItsMarkStandsWithinTheGround) {
    const std::string svg = icon();

    for (const PathPoint point : pathOf(between(svg, " d=\"", "\"")).first) {
        EXPECT_TRUE(point.x > 20 && point.x < 108 && point.y > 20 && point.y < 108);
    }
}

}  // namespace
}  // namespace orvu
