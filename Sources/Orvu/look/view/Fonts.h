#pragma once

#include <filesystem>

namespace orvu {

/// Makes the bundled faces "Doto" and "Doto Black" known to this process alone, by way of files
/// in `caches`, which are written only if they differ. Once, before the first text is laid out.
/// A folder that can't be written leaves the program without these faces, with a warning.
void installFonts(const std::filesystem::path& caches);

}  // namespace orvu
