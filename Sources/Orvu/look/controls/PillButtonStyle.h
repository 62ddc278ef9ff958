#pragma once

#include "look/AccentKey.h"
#include "look/Contrast.h"

namespace orvu {

/// A button of the shape of a capsule on a dark ground.
struct PillButtonStyle {
    enum class Kind { prominent, plain, quiet };

    static constexpr int height = 30;
    static constexpr int margin = 14;  ///< left and right of the label
    static constexpr int labelSize = 13;
    static constexpr double pressedScale = 0.92;

    Kind kind = Kind::plain;
    Color accent = AccentKey::defaultValue;

    [[nodiscard]] Paint ground() const {
        switch (kind) {
            case Kind::prominent:
                return {accent};
            case Kind::plain:
                return {Desk::white, 0.09};
            case Kind::quiet:
                break;
        }
        return {Desk::white, 0};
    }
    /// The label's colour, the easiest to read where the button lies on `below`.
    [[nodiscard]] Color label(Color below = Desk::black) const {
        return labelColor(blend(ground(), below));
    }
};

}  // namespace orvu
