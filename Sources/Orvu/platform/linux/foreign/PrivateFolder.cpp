#include "platform/linux/foreign/PrivateFolder.h"

#include "foundation/Uuid.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

#include <cerrno>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr std::string_view prefix = "OrvuImport-";

bool isName(std::string_view name) {
    return name.starts_with(prefix) && Uuid::parse(name.substr(prefix.size()));
}

FileDescriptor openFolder(const Path& path) {
    return FileDescriptor{open(path.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)};
}

/// Whether the folder is still there and this user's.
bool isOwn(const FileDescriptor& folder) {
    struct stat facts{};
    return folder && fstat(folder.get(), &facts) == 0 && facts.st_nlink > 0 &&
           facts.st_uid == geteuid();
}

/// False while another process, or another descriptor, has it. Some disks have no locks.
bool lock(const FileDescriptor& folder) {
    return flock(folder.get(), LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

void removeAll(const Path& path) {
    std::error_code failure;
    std::filesystem::remove_all(path, failure);
}

void makeParent(const Path& parent) {
    std::error_code failure;
    if (std::filesystem::is_directory(parent, failure)) return;
    std::filesystem::create_directories(parent.parent_path(), failure);
    mkdir(parent.c_str(), 0700);
}

}  // namespace

PrivateFolder::PrivateFolder(const Path& parent) {
    makeParent(parent);
    // Between its making and its locking, somebody who tidies up may take it for a leftover.
    for (int tries = 0; tries < 3; ++tries) {
        const Path path = parent / (std::string{prefix} + Uuid::random().string());
        if (mkdir(path.c_str(), 0700) != 0) return;
        folder_ = openFolder(path);
        if (lock(folder_) && isOwn(folder_)) {
            path_ = path;
            return;
        }
        folder_.reset();
        removeAll(path);
    }
}

PrivateFolder::~PrivateFolder() {
    if (!path_.empty()) removeAll(path_);
}

void PrivateFolder::removeLeftovers(const Path& parent) {
    std::error_code failure;
    std::vector<Path> leftovers;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator entry{parent, failure}; !failure && entry != end;
         entry.increment(failure)) {
        if (isName(entry->path().filename().native())) leftovers.push_back(entry->path());
    }
    for (const Path& path : leftovers) {
        const auto folder = openFolder(path);
        if (isOwn(folder) && lock(folder)) removeAll(path);
    }
}

}  // namespace orvu
