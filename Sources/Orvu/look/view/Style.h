#pragma once

#include <string>
#include <vector>

namespace orvu {

/// Gives all windows the program's style: its sheets, the accents and, last, further `rules`.
void installStyle(const std::vector<std::string>& rules = {});

}  // namespace orvu
