#pragma once

#include "platform/DownloadFolder.h"

#include <filesystem>
#include <optional>

namespace orvu {

/// Ways to give a file another name on the same file system without ever replacing what bears it.
/// Each says nothing where the file system doesn't know it.
struct FileMove {
    using Path = std::filesystem::path;
    using Result = std::optional<PartialFile::Move>;

    /// In one step.
    [[nodiscard]] static Result byRename(const Path& from, const Path& to);
    /// A second name first, which then is the only one.
    [[nodiscard]] static Result byLink(const Path& from, const Path& to);
    /// An empty file holds the name for a moment.
    [[nodiscard]] static Result byHolding(const Path& from, const Path& to);

    /// The first of these ways that the file system knows.
    [[nodiscard]] static PartialFile::Move move(const Path& from, const Path& to);
};

}  // namespace orvu
