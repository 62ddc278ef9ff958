#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace orvu {

/// The folders of profiles that a file "profiles.ini" names, in its order; `base` is the folder in
/// which it lies, from which most of them are told.
[[nodiscard]] std::vector<std::filesystem::path> profileFolders(std::string_view ini,
                                                                const std::filesystem::path& base);

}  // namespace orvu
