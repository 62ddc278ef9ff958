#pragma once

#include "platform/linux/files/FileDescriptor.h"

#include <sys/types.h>

#include <filesystem>
#include <mutex>
#include <optional>
#include <vector>

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
    /// Whether a log is there that may have what the file lacks.
    [[nodiscard]] bool hasLog() const;
    [[nodiscard]] bool isFolder() const;
    /// Whether the system lets this user write it.
    [[nodiscard]] bool isWritable() const;
    /// Whether there is no file, or an empty one, and no log either.
    [[nodiscard]] bool isAbsent() const;
    /// Renames the file, and what stands beside it, to the first free name of the same folder
    /// that ends in ".damaged-1", ".damaged-2" and so on. Nothing if the system refuses.
    [[nodiscard]] std::optional<DatabaseFile> setAside() const;

    /// What was set aside, damaged or not.
    [[nodiscard]] std::vector<DatabaseFile> filesSetAside() const;

    /// What was saved of this file while it was damaged, until it takes its place.
    [[nodiscard]] DatabaseFile salvaged() const { return sibling(".salvaged"); }
    /// A database whose name is this one's with an ending, in the same folder.
    [[nodiscard]] DatabaseFile sibling(const char* ending) const;
    /// Gives this file, which nobody has open, the other's name. The other one's goes.
    [[nodiscard]] bool replace(const DatabaseFile& other) const;
    /// Deletes the file and what stands beside it. True if none of it is there afterwards.
    [[nodiscard]] bool remove() const;
    /// Deletes what stands beside the file: log, index and journal.
    [[nodiscard]] bool removeCompanions() const;

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

/// Keeps other processes, and other threads, that ask for it out of a folder, for a moment's work
/// on its names.
class FolderLock {
public:
    /// Waits a second at most for another holder.
    explicit FolderLock(const std::filesystem::path& folder);
    /// Does not wait.
    FolderLock(const std::filesystem::path& folder, std::try_to_lock_t);

    [[nodiscard]] bool isHeld() const { return isHeld_; }

private:
    void attempt();

    FileDescriptor folder_;
    bool isHeld_ = false;
};

}  // namespace orvu
