#pragma once

#include <string>

namespace orvu {

/// The style rules of the reader's themes.
[[nodiscard]] std::string readerThemeRules();

}  // namespace orvu
