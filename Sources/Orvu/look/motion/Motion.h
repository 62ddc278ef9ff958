#pragma once

#include <chrono>

namespace orvu {

using Seconds = std::chrono::duration<double>;

/// A mass of 1 on a spring. `response` is the period that it would have without friction;
/// `damping` is the share of the friction at which it just doesn't swing. Both are above 0.
struct Spring {
    Seconds response;
    double damping;

    [[nodiscard]] double stiffness() const;
    /// The force that slows the mass down, for each unit of its velocity.
    [[nodiscard]] double friction() const;

    friend constexpr bool operator==(const Spring&, const Spring&) = default;
};

/// The springs that move what moves in the windows.
struct Motion {
    static constexpr Spring snappy{Seconds{0.32}, 0.72};
    static constexpr Spring open{Seconds{0.42}, 0.74};
    static constexpr Spring bouncy{Seconds{0.36}, 0.55};
};

/// Where a spring's mass is, and how fast it moves in units a second.
struct SpringState {
    double position = 0;
    double velocity = 0;
};

/// The way of a spring's mass from a start to the point where it rests. A motion that takes the
/// place of a running one begins with the state of that one, so that nothing jumps.
class SpringMotion {
public:
    SpringMotion(Spring spring, SpringState start, double end);

    [[nodiscard]] double end() const { return end_; }
    /// The state after `time`; before the start it is the start's.
    [[nodiscard]] SpringState at(Seconds time) const;
    /// The time from which on the mass is always within `epsilon`, which is above 0, of the end.
    /// It may have come that close for good a little earlier.
    [[nodiscard]] Seconds settlesAfter(double epsilon) const;

private:
    enum class Kind { swinging, critical, creeping };

    [[nodiscard]] SpringState swinging(double time) const;
    [[nodiscard]] SpringState critical(double time) const;
    [[nodiscard]] SpringState creeping(double time) const;
    /// A bound of the distance from the end.
    [[nodiscard]] double envelope(double time) const;

    Kind kind_ = Kind::critical;
    double end_;
    double decay_;          ///< of the slower part of the motion, per second
    double fastDecay_;      ///< of the faster part, where there are two
    double frequency_ = 0;  ///< of the swing, in radians a second
    double first_;          ///< the factors that the start gives to the two parts
    double second_;
};

}  // namespace orvu
