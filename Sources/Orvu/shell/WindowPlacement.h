#pragma once

#include "foundation/Geometry.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace orvu {

/// Sizes and places of browser windows, in points; y grows downwards.
struct WindowPlacement {
    static constexpr Size contentSize{1280, 820};
    static constexpr Size minimumSize{900, 560};
    static constexpr int topBarHeight = 52;
    /// How far a new window stands right of and below the one that it joins.
    static constexpr int cascadeStep = 28;

    /// Where the top left corner of a window goes that joins one with its corner at `topLeft`.
    [[nodiscard]] static Point cascaded(Point topLeft) {
        return {topLeft.x + cascadeStep, topLeft.y + cascadeStep};
    }
    /// The left edges and the top edge of the close, minimise and zoom buttons in the top bar.
    [[nodiscard]] static std::array<Point, 3> windowButtonOrigins(int buttonHeight);
};

/// The size of the window that opens alone, as it is kept between runs.
struct WindowFrame {
    Size size = WindowPlacement::contentSize;
    bool maximized = false;

    /// "WIDTH HEIGHT", with " maximized" behind it where it applies.
    [[nodiscard]] std::string string() const;
    /// Reads what `string` writes. Nothing for another text; a size out of reason is held
    /// between the smallest that a window takes and 16,384 points.
    [[nodiscard]] static std::optional<WindowFrame> parse(std::string_view text);
    friend bool operator==(const WindowFrame&, const WindowFrame&) = default;
};

}  // namespace orvu
