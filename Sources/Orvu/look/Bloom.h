#pragma once

#include "look/drawing/Path.h"

#include <array>
#include <cstddef>

namespace orvu {

/// A rectangle's place and size, in pixels.
struct PathRectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// The petals of the program's mark: three, turning about a middle that is left free. They keep
/// their proportions in any rectangle, of which the shorter side says how large they are.
struct BloomPetals {
    bool small = false;  ///< a heavier cut, for small sizes

    static constexpr std::size_t petals = 3;
    /// A move, four curves and a close for each petal, one petal behind the other.
    using Outline = std::array<PathSegment, 6 * petals>;

    [[nodiscard]] Outline outline(const PathRectangle& in) const;
};

/// The program's mark: the petals with a round hole punched into them, so that the ground shows.
struct BloomMark {
    struct Circle {
        PathPoint centre;
        double diameter = 0;

        friend constexpr bool operator==(const Circle&, const Circle&) = default;
    };

    bool small = false;

    [[nodiscard]] BloomPetals petals() const { return {small}; }
    [[nodiscard]] Circle hole(const PathRectangle& in) const;
};

}  // namespace orvu
