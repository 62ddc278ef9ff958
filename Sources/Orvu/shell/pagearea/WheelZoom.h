#pragma once

#include <cmath>

namespace orvu {

/// Makes whole steps of a wheel's turning, which touchpads and fine wheels tell in small parts.
class WheelZoom {
public:
    /// The steps by which to zoom after one more part of `turn` lines, positive downwards. Turned
    /// away from oneself it grows; what is left of another direction is forgotten.
    [[nodiscard]] int add(double turn) {
        if (turn_ * turn < 0) turn_ = 0;
        turn_ += turn;
        const double whole = std::trunc(turn_);
        turn_ -= whole;
        return -static_cast<int>(whole);
    }
    /// The fingers or the key were lifted.
    void end() { turn_ = 0; }

private:
    double turn_ = 0;
};

}  // namespace orvu
