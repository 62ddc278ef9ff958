#pragma once

#include "update/SignedText.h"

#include <filesystem>

namespace orvu {

/// Whether a folder holds what the text lists and nothing else: each file with its size, its mode,
/// its hash and a single name, each folder with the mode 0755, all of them this person's. No link
/// is followed.
[[nodiscard]] bool isCopyOf(const std::filesystem::path& folder, const SignedText& text);

}  // namespace orvu
