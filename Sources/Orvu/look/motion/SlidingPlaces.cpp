#include "look/motion/SlidingPlaces.h"

#include <algorithm>

namespace orvu {
namespace {

/// Within these nobody sees a line move, in pixels, or fade.
constexpr double stillness = 0.3;
constexpr double opaque = 0.01;

SpringMotion resting(Spring spring, double position) { return {spring, {position, 0}, position}; }

}  // namespace

SlidingPlaces::Way SlidingPlaces::wayTo(const Line& line, Seconds now) const {
    const auto known = ways_.find(line.key);
    if (known == ways_.end()) {
        return {resting(spring_, line.y), {spring_, {0, 0}, 1}, now};
    }
    const Way& way = known->second;
    return {{spring_, way.y.at(now - way.begin), line.y},
            {spring_, way.opacity.at(now - way.begin), 1},
            now};
}

void SlidingPlaces::moveTo(const std::vector<Line>& lines, Seconds now) {
    if (lines == lines_) return;
    const bool first = lines_.empty() && ways_.empty();
    std::map<std::string, Way> ways;
    for (const Line& line : lines) {
        const Way& way = ways.emplace(line.key, wayTo(line, now)).first->second;
        settled_ = std::max({settled_, now + way.y.settlesAfter(stillness),
                             now + way.opacity.settlesAfter(opaque)});
    }
    lines_ = lines;
    ways_ = std::move(ways);
    if (first) finish();
}

void SlidingPlaces::finish() {
    ways_.clear();
    for (const Line& line : lines_) {
        ways_.emplace(line.key, Way{resting(spring_, line.y), resting(spring_, 1), Seconds{0}});
    }
    settled_ = Seconds{0};
}

void SlidingPlaces::clear() {
    lines_.clear();
    finish();
}

SlidingPlaces::Drawing SlidingPlaces::at(const std::string& key, Seconds now) const {
    const auto known = ways_.find(key);
    if (known == ways_.end() || !isMoving(now)) return {};
    const Way& way = known->second;
    const Seconds since = now - way.begin;
    return {way.y.at(since).position - way.y.end(),
            std::clamp(way.opacity.at(since).position, 0.0, 1.0)};
}

}  // namespace orvu
