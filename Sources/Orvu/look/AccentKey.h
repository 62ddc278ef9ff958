#pragma once

#include "look/Desk.h"

namespace orvu {

/// The colour of what stands out in a window. A window without one of its own has the default.
struct AccentKey {
    static constexpr Color defaultValue = Desk::sky;
};

}  // namespace orvu
