#pragma once

#include <string>

namespace orvu {

/// The style rules of what is in a window's accent: the default one, and one of each look.
[[nodiscard]] std::string accentRules();

}  // namespace orvu
