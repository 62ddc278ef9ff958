#pragma once

#include <string>
#include <string_view>

namespace orvu {

/// Key signs such as "⇧⌘T" as the toolkit's name of the shortcut on this keyboard, such as
/// "<Control><Shift>t". The command key is Control here, option and control are Alt, and full
/// screen has a key of its own.
[[nodiscard]] std::string shortcutTrigger(std::string_view keys);

}  // namespace orvu
