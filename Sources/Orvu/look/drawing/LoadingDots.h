#pragma once

namespace orvu {

/// A row of dots whose lit part grows with a load, while a wave runs along it.
struct LoadingDots {
    static constexpr double diameter = 2;  ///< of a dot, in pixels
    static constexpr double unlit = 0.12;  ///< the opacity of a dot that the load hasn't reached
    static constexpr double still =
        0.7;  ///< of one that it has, where nothing moves: amid the wave

    int count = 0;
    double progress = 0;  ///< from 0 to 1

    [[nodiscard]] bool isLit(int dot) const;
    /// The opacity of a dot, counted from 0, `time` seconds into any day.
    [[nodiscard]] double opacity(int dot, double time) const;
    /// The opacity of a dot where no wave runs.
    [[nodiscard]] double stillOpacity(int dot) const { return isLit(dot) ? still : unlit; }
    /// Where the middle of a dot stands in a row of a width: the first and the last touch its ends.
    [[nodiscard]] double centre(int dot, double width) const;
};

}  // namespace orvu
