#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// The name of the icon that draws a symbol.
[[nodiscard]] std::string symbolIcon(std::string_view symbol);

}  // namespace orvu
