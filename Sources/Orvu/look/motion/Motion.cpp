#include "look/motion/Motion.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace orvu {
namespace {

double naturalFrequency(Spring spring) { return 2 * std::numbers::pi / spring.response.count(); }

/// Closer to 1 than this, the formulas of both sides divide by almost nothing.
constexpr double nearlyCritical = 1e-6;

}  // namespace

double Spring::stiffness() const {
    const double frequency = naturalFrequency(*this);
    return frequency * frequency;
}

double Spring::friction() const { return 2 * damping * naturalFrequency(*this); }

SpringMotion::SpringMotion(Spring spring, SpringState start, double end)
    : end_(end),
      decay_(naturalFrequency(spring)),
      fastDecay_(decay_),
      first_(start.position - end),
      second_(start.velocity + decay_ * first_) {
    const double natural = decay_;
    const double distance = first_;
    if (spring.damping < 1 - nearlyCritical) {
        kind_ = Kind::swinging;
        decay_ = spring.damping * natural;
        frequency_ = natural * std::sqrt(1 - spring.damping * spring.damping);
        second_ = (start.velocity + decay_ * distance) / frequency_;
    } else if (spring.damping > 1 + nearlyCritical) {
        kind_ = Kind::creeping;
        const double root = std::sqrt(spring.damping * spring.damping - 1);
        fastDecay_ = natural * (spring.damping + root);
        decay_ = natural / (spring.damping + root);
        first_ = (start.velocity + fastDecay_ * distance) / (fastDecay_ - decay_);
        second_ = distance - first_;
    }
}

SpringState SpringMotion::at(Seconds time) const {
    const double t = std::max(0.0, time.count());
    switch (kind_) {
        case Kind::swinging:
            return swinging(t);
        case Kind::critical:
            return critical(t);
        case Kind::creeping:
            break;
    }
    return creeping(t);
}

SpringState SpringMotion::swinging(double time) const {
    const double fade = std::exp(-decay_ * time);
    const double cosine = std::cos(frequency_ * time);
    const double sine = std::sin(frequency_ * time);
    const double distance = fade * (first_ * cosine + second_ * sine);
    const double turn = fade * frequency_ * (second_ * cosine - first_ * sine);
    return {end_ + distance, turn - decay_ * distance};
}

SpringState SpringMotion::critical(double time) const {
    const double fade = std::exp(-decay_ * time);
    const double distance = fade * (first_ + second_ * time);
    return {end_ + distance, fade * second_ - decay_ * distance};
}

SpringState SpringMotion::creeping(double time) const {
    const double slow = first_ * std::exp(-decay_ * time);
    const double fast = second_ * std::exp(-fastDecay_ * time);
    return {end_ + slow + fast, -decay_ * slow - fastDecay_ * fast};
}

double SpringMotion::envelope(double time) const {
    const double fade = std::exp(-decay_ * time);
    switch (kind_) {
        case Kind::swinging:
            return std::hypot(first_, second_) * fade;
        case Kind::critical:
            return (std::abs(first_) + std::abs(second_) * time) * fade;
        case Kind::creeping:
            break;
    }
    return std::abs(first_) * fade + std::abs(second_) * std::exp(-fastDecay_ * time);
}

Seconds SpringMotion::settlesAfter(double epsilon) const {
    // From its peak on the envelope only falls.
    const bool rises = kind_ == Kind::critical && second_ != 0;
    const double peak = rises ? std::max(0.0, 1 / decay_ - std::abs(first_ / second_)) : 0.0;
    if (envelope(peak) <= epsilon) return Seconds{0};

    double within = peak + 1 / decay_;
    while (envelope(within) > epsilon) within *= 2;
    double outside = peak;
    while (within - outside > 1e-4) {
        const double middle = (within + outside) / 2;
        (envelope(middle) > epsilon ? outside : within) = middle;
    }
    return Seconds{within};
}

}  // namespace orvu
