#pragma once

#include "foundation/async/Future.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>

namespace orvu {

/// Reads and writes small files off the main thread, in the order in which it was asked. What was
/// asked before the program's end is still written.
class FileIO {
public:
    virtual ~FileIO() = default;

    /// The content of a file; nothing if it can't be read or has more than `limit` bytes.
    [[nodiscard]] virtual Future<std::optional<std::string>> read(std::filesystem::path file,
                                                                  std::size_t limit) = 0;
    /// Puts `bytes` in the place of the file, whole or not at all. Failures are not reported.
    virtual void write(std::filesystem::path file, std::string bytes) = 0;
    /// Makes a folder and those above it. Failures are not reported.
    virtual void makeFolder(std::filesystem::path folder) = 0;
};

}  // namespace orvu
