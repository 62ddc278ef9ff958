#pragma once

#include "foundation/Color.h"

#include <string>

namespace orvu {

/// The style rules of what is drawn in a profile's colour: its ground, its symbol, the ring
/// around it, and the cell of the symbol that is chosen for it.
[[nodiscard]] std::string profileColorRules();

/// The style class of things in a colour of `ProfileLook::all`.
[[nodiscard]] std::string profileColorClass(Color color);

}  // namespace orvu
