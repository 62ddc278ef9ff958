#pragma once

#include <chrono>
#include <compare>
#include <cstdint>

namespace orvu {

/// A moment, as seconds since 2001-01-01 00:00:00 UTC. Any finite number is a valid date.
class Date {
public:
    constexpr Date() = default;
    constexpr explicit Date(double secondsSinceReference) : seconds_(secondsSinceReference) {}

    /// The wall clock's present time.
    [[nodiscard]] static Date now();
    /// Before every date that a program meets.
    [[nodiscard]] static constexpr Date distantPast() { return Date{-63114076800.0}; }
    [[nodiscard]] static constexpr Date fromUnixSeconds(double seconds) {
        return Date{seconds - unixOffset};
    }

    [[nodiscard]] constexpr double secondsSinceReference() const { return seconds_; }
    [[nodiscard]] constexpr double unixSeconds() const { return seconds_ + unixOffset; }
    /// Whole seconds since 1970, truncated towards zero; held within what 64 bits take.
    [[nodiscard]] std::int64_t wholeUnixSeconds() const;

    /// The date that lies `interval` later.
    [[nodiscard]] constexpr Date after(std::chrono::duration<double> interval) const {
        return Date{seconds_ + interval.count()};
    }
    /// Seconds from `earlier` to this date, negative if it lies later.
    [[nodiscard]] constexpr double secondsSince(Date earlier) const {
        return seconds_ - earlier.seconds_;
    }

    friend constexpr auto operator<=>(Date, Date) = default;

private:
    /// Seconds from 1970-01-01 to 2001-01-01, both UTC.
    static constexpr double unixOffset = 978307200.0;
    double seconds_ = 0;
};

}  // namespace orvu
