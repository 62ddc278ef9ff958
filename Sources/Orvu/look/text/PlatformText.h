#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// A text of the program as it is shown on this desktop: key signs become the names on this
/// keyboard ("⇧⌘T" becomes "Ctrl+Shift+T"), the machine is called a computer and
/// its file manager Files; programs that are named are those that there are here.
[[nodiscard]] std::string platformText(std::string_view text);

}  // namespace orvu
