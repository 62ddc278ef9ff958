#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <filesystem>

namespace orvu {

/// A new folder that only its owner may look into, removed at the end with all that lies in it.
/// That of a process that was killed is removed by `removeLeftovers`.
class PrivateFolder {
public:
    /// Makes it below `parent`, and that too if it isn't there.
    explicit PrivateFolder(const std::filesystem::path& parent);
    PrivateFolder(const PrivateFolder&) = delete;
    PrivateFolder& operator=(const PrivateFolder&) = delete;
    ~PrivateFolder();

    /// Empty if it could not be made.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Removes the folders below `parent` that nobody uses any more.
    static void removeLeftovers(const std::filesystem::path& parent);

private:
    std::filesystem::path path_;
    FileDescriptor folder_;  ///< its lock says that it is in use
};

}  // namespace orvu
