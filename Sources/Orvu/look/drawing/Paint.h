#pragma once

#include "foundation/Color.h"

namespace orvu {

/// A colour that may let through what lies below it.
struct Paint {
    Color color;
    double opacity = 1;  ///< 0 to 1

    friend constexpr bool operator==(const Paint&, const Paint&) = default;
};

}  // namespace orvu
