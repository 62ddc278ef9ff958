#pragma once

#include "core/BrowserTab.h"

#include <string>

namespace orvu {

/// The title of a tab as the window shows it. Never blank.
[[nodiscard]] std::string shownTitle(const BrowserTab& tab);

}  // namespace orvu
