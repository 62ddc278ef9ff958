#pragma once

#include <cstddef>
#include <string_view>

namespace orvu {

/// How many characters must be put in, taken out or replaced to make one text of the other.
/// Canonically equivalent characters are the same.
[[nodiscard]] std::size_t editDistance(std::string_view a, std::string_view b);

}  // namespace orvu
