#pragma once

#include "foundation/Date.h"

#include <cstdint>

namespace orvu {

/// How a browser counts time in its database.
struct DatabaseTime {
    double epoch = 0;      ///< its zero, in seconds since 1970
    double perSecond = 1;  ///< how many of its units a second has

    /// Truncated towards zero.
    [[nodiscard]] constexpr std::int64_t valueOf(Date date) const {
        return static_cast<std::int64_t>((date.unixSeconds() - epoch) * perSecond);
    }
    [[nodiscard]] constexpr Date dateOf(std::int64_t value) const {
        return Date::fromUnixSeconds(static_cast<double>(value) / perSecond + epoch);
    }
};

constexpr DatabaseTime microsecondsSince1601{-11644473600.0, 1e6};
constexpr DatabaseTime microsecondsSince1970{0, 1e6};
constexpr DatabaseTime secondsSince2001{978307200.0, 1};

}  // namespace orvu
