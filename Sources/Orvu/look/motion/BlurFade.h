#pragma once

#include <algorithm>

namespace orvu {

/// How content comes out of a blur as it fades in.
struct BlurFade {
    double radius = 0;  ///< of the blur, in pixels

    [[nodiscard]] constexpr double opacity() const { return radius > 0 ? 0 : 1; }

    /// The step on the way from this one, at 0, to content as it is, at 1.
    struct Step {
        double radius;
        double opacity;
    };
    [[nodiscard]] constexpr Step at(double progress) const {
        const double p = std::clamp(progress, 0.0, 1.0);
        return {radius * (1 - p), opacity() + (1 - opacity()) * p};
    }
};

}  // namespace orvu
