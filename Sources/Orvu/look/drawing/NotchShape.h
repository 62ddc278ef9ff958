#pragma once

#include "look/drawing/Path.h"

#include <array>

namespace orvu {

/// The outline of the notch: it hangs from the window's top edge, into which two ears flare, and
/// has round lower corners that are a little squarer than circles. Both values can be animated.
struct NotchShape {
    double bottomRadius = 0;
    double ear = 0;

    using Outline = std::array<PathSegment, 9>;

    /// The radius that there is room for, at most `bottomRadius`.
    [[nodiscard]] double radius(double width, double height) const;
    [[nodiscard]] Outline outline(double width, double height) const;

    /// The shape on the way from one to another: 0 is `from`, 1 is `to`; beyond is allowed.
    [[nodiscard]] static NotchShape between(NotchShape from, NotchShape to, double progress);

    friend constexpr bool operator==(NotchShape, NotchShape) = default;
};

}  // namespace orvu
