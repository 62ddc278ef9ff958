#pragma once

#include <variant>

namespace orvu {

/// A place in pixels, to the right of and below the corner of what is drawn.
struct PathPoint {
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(PathPoint, PathPoint) = default;
};

struct MoveTo {
    PathPoint end;
    friend constexpr bool operator==(const MoveTo&, const MoveTo&) = default;
};
struct LineTo {
    PathPoint end;
    friend constexpr bool operator==(const LineTo&, const LineTo&) = default;
};
struct QuadraticTo {
    PathPoint control;
    PathPoint end;
    friend constexpr bool operator==(const QuadraticTo&, const QuadraticTo&) = default;
};
struct CubicTo {
    PathPoint first;
    PathPoint second;
    PathPoint end;
    friend constexpr bool operator==(const CubicTo&, const CubicTo&) = default;
};
struct ClosePath {
    friend constexpr bool operator==(const ClosePath&, const ClosePath&) = default;
};

/// A piece of an outline; it begins where the one before it ends.
using PathSegment = std::variant<MoveTo, LineTo, QuadraticTo, CubicTo, ClosePath>;

/// The cubic curve that is the same as a quadratic one from `start`.
[[nodiscard]] constexpr CubicTo asCubic(PathPoint start, const QuadraticTo& curve) {
    const auto towards = [&](PathPoint from) {
        return PathPoint{from.x + (curve.control.x - from.x) * 2 / 3,
                         from.y + (curve.control.y - from.y) * 2 / 3};
    };
    return {towards(start), towards(curve.end), curve.end};
}

}  // namespace orvu
