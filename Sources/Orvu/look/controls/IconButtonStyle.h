#pragma once

#include "look/AccentKey.h"
#include "look/Contrast.h"

namespace orvu {

/// A square button with a symbol on a dark ground.
struct IconButtonStyle {
    static constexpr int symbolSize = 13;
    static constexpr double pressedScale = 0.88;

    bool active = false;
    int size = 30;  ///< of the square
    Color accent = AccentKey::defaultValue;

    [[nodiscard]] Paint ground() const { return active ? Paint{accent} : Paint{Desk::white, 0.07}; }
    [[nodiscard]] Paint symbol() const {
        return active ? Paint{labelColor(accent)} : Paint{Desk::white, 0.8};
    }
};

}  // namespace orvu
