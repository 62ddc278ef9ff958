#pragma once

#include "foundation/Color.h"

#include <string>

namespace orvu {

/// A colour as style sheets write it: "rgb(1,2,3)".
[[nodiscard]] inline std::string cssColor(Color color) {
    return "rgb(" + std::to_string(color.red) + "," + std::to_string(color.green) + "," +
           std::to_string(color.blue) + ")";
}

}  // namespace orvu
