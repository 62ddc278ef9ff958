#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// The name in the icon theme of a symbol's drawing: "plus-bold-symbolic" for "plus". Empty for
/// a symbol that the program doesn't have.
[[nodiscard]] std::string symbolIcon(std::string_view symbol);

}  // namespace orvu
