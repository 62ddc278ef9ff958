#pragma once

#include "foundation/Color.h"

#include <array>
#include <string_view>

namespace orvu {

/// A colour for each site, from its name alone.
class SiteColor {
public:
    static constexpr std::array<Color, 6> palette{Color::hex(0x5CB2FF), Color::hex(0xA594FF),
                                                  Color::hex(0xFFB547), Color::hex(0xFF8AD8),
                                                  Color::hex(0x6CF0C2), Color::hex(0x9CD3FF)};

    /// The palette's colour at the sum of the name's code points, modulo 6; `Desk::line` for the
    /// empty name.
    [[nodiscard]] static Color of(std::string_view name);
};

}  // namespace orvu
