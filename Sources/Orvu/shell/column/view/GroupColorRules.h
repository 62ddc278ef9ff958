#pragma once

#include <string>

namespace orvu {

/// The style rules of the dots of groups, in the groups' colours.
[[nodiscard]] std::string groupColorRules();

}  // namespace orvu
