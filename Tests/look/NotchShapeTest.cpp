#include "look/drawing/NotchShape.h"

#include <gtest/gtest.h>

#include <random>

namespace orvu {
namespace {

TEST(NotchShapeTest, TheOutlineRunsFromEarToEar) {
    const NotchShape shape{.bottomRadius = 20, .ear = 10};

    const NotchShape::Outline expected{
        MoveTo{{0, 0}},     QuadraticTo{{10, 0}, {10, 10}},
        LineTo{{10, 80}},   CubicTo{{10, 91}, {19, 100}, {30, 100}},
        LineTo{{270, 100}}, CubicTo{{281, 100}, {290, 91}, {290, 80}},
        LineTo{{290, 10}},  QuadraticTo{{290, 0}, {300, 0}},
        ClosePath{},
    };
    EXPECT_EQ(shape.outline(300, 100), expected);
}

TEST(NotchShapeTest, WithoutEarsTheTopCornersAreSquare) {
    const auto outline = NotchShape{.bottomRadius = 8, .ear = 0}.outline(200, 40);

    EXPECT_EQ(outline[1], PathSegment(QuadraticTo{{0, 0}, {0, 0}}));
    EXPECT_EQ(outline[2], PathSegment(LineTo{{0, 32}}));
    EXPECT_EQ(outline[6], PathSegment(LineTo{{200, 0}}));
    EXPECT_EQ(outline[7], PathSegment(QuadraticTo{{200, 0}, {200, 0}}));
}

TEST(NotchShapeTest, NarrowerThanItsEarsItHasNoRadius) {
    EXPECT_EQ((NotchShape{.bottomRadius = 20, .ear = 30}.radius(40, 100)), 0);
}

TEST(NotchShapeTest, TheRadiusIsAtMostHalfTheHeight) {
    EXPECT_EQ((NotchShape{.bottomRadius = 80, .ear = 5}.radius(500, 60)), 30);
}

TEST(NotchShapeTest, TheRadiusIsAtMostHalfTheBody) {
    EXPECT_EQ((NotchShape{.bottomRadius = 80, .ear = 10}.radius(60, 500)), 20);
}

TEST(NotchShapeTest, ANegativeRadiusIsNone) {
    EXPECT_EQ((NotchShape{.bottomRadius = -5, .ear = 10}.radius(60, 500)), 0);
}

TEST(NotchShapeTest, TheRadiusFitsWhateverTheSize) {
    std::mt19937 chance{3};
    std::uniform_real_distribution<double> any{-50, 400};
    for (int i = 0; i < 2000; ++i) {
        const NotchShape shape{any(chance), any(chance)};
        const double width = any(chance);
        const double height = any(chance);

        const double radius = shape.radius(width, height);

        ASSERT_GE(radius, 0);
        if (radius > 0) {
            ASSERT_LE(radius, shape.bottomRadius);
            ASSERT_LE(2 * radius, height);
            ASSERT_LE(2 * (radius + shape.ear), width + 1e-9);
        }
    }
}

TEST(NotchShapeTest, BothValuesMoveAsAPair) {
    const NotchShape rest{10, 8};
    const NotchShape open{30, 12};

    EXPECT_EQ(NotchShape::between(rest, open, 0), rest);
    EXPECT_EQ(NotchShape::between(rest, open, 0.5), (NotchShape{20, 10}));
    EXPECT_EQ(NotchShape::between(rest, open, 1), open);
    EXPECT_EQ(NotchShape::between(rest, open, 1.5), (NotchShape{40, 14}));
}

TEST(NotchShapeTest, AQuadraticCurveAndItsCubicAreTheSame) {
    const PathPoint start{0, 0};
    const QuadraticTo curve{{10, 0}, {10, 10}};

    const CubicTo cubic = asCubic(start, curve);

    for (double t = 0; t <= 1; t += 0.125) {
        const double u = 1 - t;
        const double x = 2 * u * t * curve.control.x + t * t * curve.end.x;
        const double y = 2 * u * t * curve.control.y + t * t * curve.end.y;
        EXPECT_NEAR(3 * u * u * t * cubic.first.x + 3 * u * t * t * cubic.second.x +
                        t * t * t * cubic.end.x,
                    x, 1e-12);
        EXPECT_NEAR(3 * u * u * t * cubic.first.y + 3 * u * t * t * cubic.second.y +
                        t * t * t * cubic.end.y,
                    y, 1e-12);
    }
}

}  // namespace
}  // namespace orvu
