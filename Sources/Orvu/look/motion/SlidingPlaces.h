#pragma once

#include "look/motion/Motion.h"

#include <map>
#include <string>
#include <vector>

namespace orvu {

/// Where the lines of a list are drawn while they go to their places: each from where it is just
/// then, with the speed it has. A line that is new fades in where it belongs; one that has gone is
/// gone at once. Times are those of one clock and never run backwards.
class SlidingPlaces {
public:
    struct Line {
        std::string key;  ///< unique within a list
        double y = 0;     ///< its place, in pixels
        friend bool operator==(const Line&, const Line&) = default;
    };
    struct Drawing {
        double offset = 0;   ///< from the line's place, in pixels
        double opacity = 1;  ///< from 0 to 1
    };

    explicit SlidingPlaces(Spring spring) : spring_(spring) {}

    /// From `now` on these are the lines. The same lines again change nothing; the first ones
    /// since `clear` are in their places at once.
    void moveTo(const std::vector<Line>& lines, Seconds now);
    /// Puts every line in its place.
    void finish();
    void clear();

    /// What `key` looks like at `now`; a line that is not in the list stands still.
    [[nodiscard]] Drawing at(const std::string& key, Seconds now) const;
    /// Whether anything moves, or fades, after `now`.
    [[nodiscard]] bool isMoving(Seconds now) const { return now < settled_; }

private:
    struct Way {
        SpringMotion y;
        SpringMotion opacity;
        Seconds begin;
    };

    [[nodiscard]] Way wayTo(const Line& line, Seconds now) const;

    Spring spring_;
    std::vector<Line> lines_;
    std::map<std::string, Way> ways_;
    Seconds settled_{0};
};

}  // namespace orvu
