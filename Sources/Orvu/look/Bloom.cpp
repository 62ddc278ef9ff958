#include "look/Bloom.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvu {
namespace {

/// The side of the square in which the mark is designed, in units.
constexpr double designSide = 1000;
/// How far the petals' common centre lies from the middle of that square, in units.
constexpr PathPoint centreOffset{16, 49};
/// By how much each petal is turned about its base, in degrees: this makes the pinwheel.
constexpr double twist = 22;
/// The directions of the petals, in degrees.
constexpr std::array<double, BloomPetals::petals> directions{-104, 16, 136};

/// A petal that lies along the x axis, in units.
struct Petal {
    double start;    ///< of its base
    double length;   ///< from the centre to its broadest place
    double tip;      ///< from there to the end of its tip
    double breadth;  ///< half of it
    double slope;    ///< where the curves' controls at the base lie
};

constexpr Petal ordinaryPetal{6, 232, 172, 158, 17.3};
constexpr Petal smallPetal{0, 215, 165, 172, 10.75};

/// Where the design lies in a rectangle.
struct Design {
    double scale;
    PathPoint centre;

    explicit Design(const PathRectangle& in)
        : scale(std::max(0.0, std::min(in.width, in.height)) / designSide),
          centre{in.x + in.width / 2 + centreOffset.x * scale,
                 in.y + in.height / 2 + centreOffset.y * scale} {}
};

PathPoint turned(PathPoint point, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    return {point.x * std::cos(angle) - point.y * std::sin(angle),
            point.x * std::sin(angle) + point.y * std::cos(angle)};
}

std::array<PathSegment, 6> petalOutline(const Petal& petal, double direction,
                                        const Design& design) {
    const auto [t, l, a, b, o] = petal;
    const auto at = [&](double x, double y) {
        const PathPoint twisted = turned({x - t, y}, twist);
        const PathPoint placed = turned({twisted.x + t, twisted.y}, direction);
        return PathPoint{design.centre.x + placed.x * design.scale,
                         design.centre.y + placed.y * design.scale};
    };
    return {MoveTo{at(t, 0)},
            CubicTo{at(o, -0.78 * b), at(l - 0.7 * a, -b), at(l, -b)},
            CubicTo{at(l + 0.56 * a, -b), at(l + a, -0.56 * b), at(l + a, 0)},
            CubicTo{at(l + a, 0.56 * b), at(l + 0.56 * a, b), at(l, b)},
            CubicTo{at(l - 0.7 * a, b), at(o, 0.78 * b), at(t, 0)},
            ClosePath{}};
}

}  // namespace

BloomPetals::Outline BloomPetals::outline(const PathRectangle& in) const {
    const Design design{in};
    Outline outline;
    auto end = outline.begin();
    for (const double direction : directions) {
        end = std::ranges::copy(petalOutline(small ? smallPetal : ordinaryPetal, direction, design),
                                end)
                  .out;
    }
    return outline;
}

BloomMark::Circle BloomMark::hole(const PathRectangle& in) const {
    constexpr double ordinaryDiameter = 178;
    constexpr double smallDiameter = 220;
    const Design design{in};
    return {design.centre, (small ? smallDiameter : ordinaryDiameter) * design.scale};
}

}  // namespace orvu
