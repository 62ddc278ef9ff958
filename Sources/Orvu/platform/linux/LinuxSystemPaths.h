#pragma once

#include "platform/SystemPaths.h"

namespace orvu {

/// The folder "Orvu" below each of the desktop's base folders for configuration, data and caches.
[[nodiscard]] SystemPaths linuxSystemPaths();

}  // namespace orvu
