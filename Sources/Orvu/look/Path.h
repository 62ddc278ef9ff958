#pragma once

#include <variant>

namespace orvu {

/// A place in pixels, to the right of and below the corner of what is drawn.
struct Point {
    double x = 0;
    double y = 0;

    friend constexpr bool operator==(Point, Point) = default;
};

struct MoveTo {
    Point end;
    friend constexpr bool operator==(const MoveTo&, const MoveTo&) = default;
};
struct LineTo {
    Point end;
    friend constexpr bool operator==(const LineTo&, const LineTo&) = default;
};
struct QuadraticTo {
    Point control;
    Point end;
    friend constexpr bool operator==(const QuadraticTo&, const QuadraticTo&) = default;
};
struct CubicTo {
    Point first;
    Point second;
    Point end;
    friend constexpr bool operator==(const CubicTo&, const CubicTo&) = default;
};
struct ClosePath {
    friend constexpr bool operator==(const ClosePath&, const ClosePath&) = default;
};

/// A piece of an outline; it begins where the one before it ends.
using PathSegment = std::variant<MoveTo, LineTo, QuadraticTo, CubicTo, ClosePath>;

/// The cubic curve that is the same as a quadratic one from `start`.
[[nodiscard]] constexpr CubicTo asCubic(Point start, const QuadraticTo& curve) {
    const auto towards = [&](Point from) {
        return Point{from.x + (curve.control.x - from.x) * 2 / 3,
                     from.y + (curve.control.y - from.y) * 2 / 3};
    };
    return {towards(start), towards(curve.end), curve.end};
}

}  // namespace orvu
