#pragma once

#include "import/ImportSource.h"
#include "platform/ForeignFiles.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace orvu {

/// Finds the profile that was used last among those in the folders `bases`: the one where a file of
/// its kind was changed last, and of equal ones the first. Looked at are the folders in each base
/// as they are listed, the usual names, the base itself, and what a file "profiles.ini" names.
/// Nothing if none of them holds such a file.
[[nodiscard]] std::optional<std::filesystem::path> newestProfile(
    const ForeignFiles& files, const std::vector<std::filesystem::path>& bases, BrowserKind kind);

}  // namespace orvu
