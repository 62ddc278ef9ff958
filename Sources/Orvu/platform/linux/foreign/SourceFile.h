#pragma once

#include "platform/ForeignFiles.h"
#include "platform/linux/files/FileDescriptor.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// What there is where a file should be.
[[nodiscard]] ForeignFiles::Access accessTo(const std::filesystem::path& file);

/// Whether a regular file is there, as far as the system tells.
[[nodiscard]] bool isRegularFile(const std::filesystem::path& file);

/// A regular file, open for reading alone. Where something else stands, such as a pipe that nobody
/// writes into, it does not wait, and gives nothing.
[[nodiscard]] FileDescriptor openSource(const std::filesystem::path& file);

/// What stands in a file; nothing if it can't be read to its end by the deadline, or if it has more
/// than `limit` bytes.
[[nodiscard]] std::optional<std::string> sourceText(const std::filesystem::path& file,
                                                    std::size_t limit, ReadDeadline deadline);

/// Copies a file of at most `limit` bytes to a new one that only its owner may read. False if that
/// can't be done by the deadline; something of the copy may then be there.
[[nodiscard]] bool copySource(const std::filesystem::path& file,
                              const std::filesystem::path& target, std::size_t limit,
                              ReadDeadline deadline);

}  // namespace orvu
