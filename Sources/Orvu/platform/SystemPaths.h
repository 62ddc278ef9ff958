#pragma once

#include <filesystem>

namespace orvu {

/// The program's own folders. They need not exist yet.
struct SystemPaths {
    std::filesystem::path configuration;  ///< user defaults
    std::filesystem::path data;           ///< website data, icons
    std::filesystem::path caches;         ///< what may be lost at any time
};

}  // namespace orvu
