#pragma once

#include "platform/SystemPaths.h"

#include <filesystem>

namespace orvu {

/// The folder "Orvu" below each of the desktop's base folders for configuration, data and caches.
[[nodiscard]] SystemPaths linuxSystemPaths();
/// The desktop's folder for downloads, or "Downloads" in the person's home if it has none.
[[nodiscard]] std::filesystem::path downloadsFolder();

}  // namespace orvu
