#pragma once

#include <string_view>

namespace orvu {

/// Whether a text runs from right to left: its first letter that has a direction says so.
[[nodiscard]] bool runsLeftwards(std::string_view text);

}  // namespace orvu
