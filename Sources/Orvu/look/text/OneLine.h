#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace orvu {

/// A text that others wrote, fit for one line of the window: line ends and control characters
/// become single spaces, the ends are trimmed, bytes that are no UTF-8 are replaced, and what
/// goes beyond `limit` code points is cut off and marked with "…".
[[nodiscard]] std::string oneLine(std::string_view text, std::size_t limit);

}  // namespace orvu
