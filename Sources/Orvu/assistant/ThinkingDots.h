#pragma once

namespace orvu {

/// The three dots that a wave runs through while the assistant thinks.
struct ThinkingDots {
    static constexpr int count = 3;
    static constexpr double diameter = 5;   ///< of a dot, in pixels
    static constexpr double spacing = 4;    ///< between two
    static constexpr double still = 0.625;  ///< the opacity where nothing moves: amid the wave

    /// The opacity of a dot, counted from 0, at `time` in seconds.
    [[nodiscard]] static double opacity(int dot, double time);
};

}  // namespace orvu
