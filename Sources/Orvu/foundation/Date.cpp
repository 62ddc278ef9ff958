#include "foundation/Date.h"

#include <cmath>

namespace orvu {

Date Date::now() {
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    return fromUnixSeconds(std::chrono::duration<double>(sinceEpoch).count());
}

std::int64_t Date::wholeUnixSeconds() const {
    constexpr double limit = 9.0e18;
    const double seconds = unixSeconds();
    if (std::isnan(seconds)) return 0;
    if (seconds >= limit) return static_cast<std::int64_t>(limit);
    if (seconds <= -limit) return -static_cast<std::int64_t>(limit);
    return static_cast<std::int64_t>(seconds);
}

}  // namespace orvu
