#pragma once

#include <cstddef>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>

namespace orvu {

/// What stands in a file, or its first `limit` bytes. Nothing if that can't be read to its end, as
/// with a disk that fails, a folder, or what the kernel tells of a process that has just ended. It
/// never throws; a stream's iterator does in these cases.
[[nodiscard]] std::optional<std::string> fileText(
    const std::filesystem::path& file, std::size_t limit = std::numeric_limits<std::size_t>::max());

}  // namespace orvu
