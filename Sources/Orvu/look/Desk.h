#pragma once

#include "foundation/Color.h"

namespace orvu {

/// The window's fixed colours.
struct Desk {
    static constexpr Color paper{245, 246, 248};  ///< pale ground
    static constexpr Color ink{18, 19, 22};       ///< text on light
    static constexpr Color muted{95, 99, 107};    ///< secondary text
    static constexpr Color faint{138, 142, 150};  ///< tertiary text and symbols
    static constexpr Color line{230, 232, 235};   ///< hairlines
    static constexpr Color blue{31, 111, 209};    ///< links and selection
    static constexpr Color black{11, 12, 15};     ///< the darkest ground
    static constexpr Color sky{92, 178, 255};     ///< the default accent
    static constexpr Color notchInk{4, 18, 31};   ///< text on the accent: bluer than `ink`
    static constexpr Color white{255, 255, 255};
};

}  // namespace orvu
