#pragma once

#include "platform/DownloadFolder.h"

#include <string_view>
#include <utility>

namespace orvu {

/// A folder on the disk. Each file under way lies in a hidden folder of its own, which is locked
/// as long as this process lives: so what a killed process left can be told from what is in use,
/// and nothing of the person's is ever in the way of the engine's own temporary files.
class LinuxDownloadFolder : public DownloadFolder {
public:
    /// How the name of a place begins; six letters of chance follow.
    static constexpr std::string_view partialPrefix = ".orvu-download-";

    explicit LinuxDownloadFolder(std::filesystem::path path) : path_(std::move(path)) {}

    [[nodiscard]] std::filesystem::path path() const override { return path_; }
    [[nodiscard]] bool exists(const std::filesystem::path& file) const override;
    [[nodiscard]] std::unique_ptr<PartialFile> makePartialFile() override;

    /// Removes the places in a folder that no living process holds. Those that hold anything but
    /// a half download, belong to somebody else or can't be locked stay. For any thread.
    static void removeLeftovers(const std::filesystem::path& folder);

private:
    const std::filesystem::path path_;
};

}  // namespace orvu
