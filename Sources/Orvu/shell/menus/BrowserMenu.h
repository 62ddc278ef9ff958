#pragma once

#include "core/BrowserStore.h"
#include "shell/menus/MainMenu.h"

#include <vector>

namespace orvu {

/// The items of the "More" menu of a window. Behind them it shows the main menu.
[[nodiscard]] std::vector<MenuItem> browserMenu(const BrowserStore& store);

}  // namespace orvu
