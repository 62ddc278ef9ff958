#pragma once

#include <cstdint>

namespace orvu {

/// An opaque sRGB colour in components of 8 bits.
struct Color {
    std::uint8_t red = 0;
    std::uint8_t green = 0;
    std::uint8_t blue = 0;

    /// The colour that is written #RRGGBB.
    [[nodiscard]] static constexpr Color hex(std::uint32_t rgb) {
        return {static_cast<std::uint8_t>(rgb >> 16), static_cast<std::uint8_t>(rgb >> 8),
                static_cast<std::uint8_t>(rgb)};
    }

    friend constexpr bool operator==(Color, Color) = default;
};

}  // namespace orvu
