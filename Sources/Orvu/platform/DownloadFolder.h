#pragma once

#include <filesystem>
#include <memory>

namespace orvu {

/// Room for one file under way. Ending this removes whatever is left in it.
class PartialFile {
public:
    enum class Move {
        done,
        taken,   ///< something stands under that name
        failed,  ///< the file is not there, or the folder takes no more
    };

    virtual ~PartialFile() = default;

    /// Where the file is to be written. Nothing else is ever there.
    [[nodiscard]] virtual std::filesystem::path file() const = 0;
    /// Gives the file its lasting name, whole and at once. What stands there is never replaced.
    [[nodiscard]] virtual Move moveTo(const std::filesystem::path& target) = 0;
};

/// The folder for downloads, and what is needed of the file system there.
class DownloadFolder {
public:
    virtual ~DownloadFolder() = default;

    [[nodiscard]] virtual std::filesystem::path path() const = 0;
    /// Whether anything stands there, a link that leads nowhere too.
    [[nodiscard]] virtual bool exists(const std::filesystem::path& file) const = 0;
    /// A place on the folder's own disk. Makes the folder if it is missing; null if that, or the
    /// place itself, can't be had.
    [[nodiscard]] virtual std::unique_ptr<PartialFile> makePartialFile() = 0;
};

}  // namespace orvu
