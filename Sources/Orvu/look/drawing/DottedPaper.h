#pragma once

#include "look/drawing/DotGrid.h"

namespace orvu {

/// Dots on a ground that belongs to what lies below.
struct DottedPaper {
    static constexpr DotGrid grid{};
    static constexpr double opacity = 0.12;
};

}  // namespace orvu
