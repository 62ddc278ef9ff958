#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// When a read has to be over.
using ImportDeadline = std::chrono::steady_clock::time_point;

/// What there is where a browser's file should be. Only a regular file is one; links are followed.
enum class FileAccess {
    absent,
    refused,  ///< it can't be opened, or the system hides what is in its folder
    empty,    ///< nothing comes back
    readable,
};
[[nodiscard]] FileAccess accessTo(const std::filesystem::path& file);

/// Whether a regular file is there, as far as the system tells.
[[nodiscard]] bool isRegularFile(const std::filesystem::path& file);

/// A regular file, open for reading alone. Where something else stands, such as a pipe that nobody
/// writes into, it does not wait, and gives nothing.
[[nodiscard]] FileDescriptor openSource(const std::filesystem::path& file);

/// What stands in a file; nothing if it can't be read to its end by the deadline, or if it has more
/// than `limit` bytes.
[[nodiscard]] std::optional<std::string> sourceText(const std::filesystem::path& file,
                                                    std::size_t limit, ImportDeadline deadline);

/// Copies a file of at most `limit` bytes to a new one that only its owner may read. False if that
/// can't be done by the deadline; something of the copy may then be there.
[[nodiscard]] bool copySource(const std::filesystem::path& file,
                              const std::filesystem::path& target, std::size_t limit,
                              ImportDeadline deadline);

}  // namespace orvu
