#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <sys/types.h>

#include <filesystem>
#include <optional>

namespace orvu {

/// A database as the file system knows it: a file that only its owner may read, and beside it
/// its log, index and journal while it is in use.
class DatabaseFile {
public:
    explicit DatabaseFile(const std::filesystem::path& path);

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path folder() const { return path_.parent_path(); }

    /// Makes the folders that are missing, for their owner alone. False if there is no folder
    /// in the end.
    [[nodiscard]] bool makeFolder() const;
    /// Makes an empty file if there is none, and lets only its owner read and write it.
    void makePrivate() const;
    /// Whether a database can't be here: something that is no file stands in its place, or a file
    /// too short for one, the system denies this user the file, or a log is left whose file is
    /// gone.
    [[nodiscard]] bool isUnusable() const;
    /// Whether a file with anything in it is there. Where none is, the library takes a log that
    /// stands beside its place for rubbish and deletes it.
    [[nodiscard]] bool hasContent() const;
    /// Renames the file, and what stands beside it, to the first free name of the same folder
    /// that ends in ".damaged-1", ".damaged-2" and so on. Nothing if the system refuses.
    [[nodiscard]] std::optional<DatabaseFile> setAside() const;

    /// Tells the file from another that later bears its name.
    struct Identity {
        dev_t device = 0;
        ino_t node = 0;
        friend bool operator==(const Identity&, const Identity&) = default;
    };
    [[nodiscard]] std::optional<Identity> identity() const;

private:
    [[nodiscard]] std::filesystem::path beside(const char* suffix) const;

    std::filesystem::path path_;
};

/// Keeps other processes that ask for it out of a folder, for a moment's work on its names. One
/// that holds it for more than a second is not waited for any longer.
class FolderLock {
public:
    explicit FolderLock(const std::filesystem::path& folder);

private:
    FileDescriptor folder_;
};

}  // namespace orvu
