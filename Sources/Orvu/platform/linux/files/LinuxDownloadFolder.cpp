#include "platform/linux/files/LinuxDownloadFolder.h"

#include "platform/linux/files/FileDescriptor.h"
#include "platform/linux/files/FileMove.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

namespace orvu {
namespace {

using Path = std::filesystem::path;

constexpr std::string_view randomPart = "XXXXXX";
constexpr const char* fileName = "part";
/// Where the engine writes until it has everything.
constexpr const char* engineFileName = "part.wkdownload";

/// The folder of one file under way, open and locked.
class LockedFolder {
public:
    explicit LockedFolder(Path path)
        : path_(std::move(path)),
          folder_(open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) {}

    [[nodiscard]] const Path& path() const { return path_; }
    /// Whether it is there and this user's.
    [[nodiscard]] bool isOwn() const {
        struct stat facts{};
        return folder_ && fstat(folder_.get(), &facts) == 0 && facts.st_nlink > 0 &&
               facts.st_uid == geteuid();
    }
    /// False while another process, or another descriptor, has it.
    [[nodiscard]] bool lock() const { return flock(folder_.get(), LOCK_EX | LOCK_NB) == 0; }
    /// Fails silently where anything else lies in it.
    void remove() const {
        if (!folder_) return;
        unlinkat(folder_.get(), fileName, 0);
        unlinkat(folder_.get(), engineFileName, 0);
        rmdir(path_.c_str());
    }

private:
    const Path path_;
    FileDescriptor folder_;
};

class LinuxPartialFile : public PartialFile {
public:
    explicit LinuxPartialFile(std::unique_ptr<LockedFolder> part)
        : lockedFolder_(std::move(part)) {}
    ~LinuxPartialFile() override { lockedFolder_->remove(); }

    [[nodiscard]] Path file() const override { return lockedFolder_->path() / fileName; }
    [[nodiscard]] Move moveTo(const Path& target) override {
        return FileMove::move(file(), target);
    }

private:
    const std::unique_ptr<LockedFolder> lockedFolder_;
};

bool isPartialFolderName(std::string_view name) {
    return name.starts_with(LinuxDownloadFolder::partialPrefix) &&
           name.size() == LinuxDownloadFolder::partialPrefix.size() + randomPart.size();
}

}  // namespace

bool LinuxDownloadFolder::exists(const std::filesystem::path& file) const {
    struct stat facts{};
    return lstat(file.c_str(), &facts) == 0;
}

std::unique_ptr<PartialFile> LinuxDownloadFolder::makePartialFile() {
    std::error_code failure;
    std::filesystem::create_directories(path_, failure);
    // Between its making and its locking, somebody who tidies up may take a folder for a leftover.
    for (int tries = 0; tries < 3; ++tries) {
        std::string name = (path_ / partialPrefix).string().append(randomPart);
        if (!mkdtemp(name.data())) return nullptr;
        auto part = std::make_unique<LockedFolder>(name);
        const bool isLocked = part->lock() || errno != EWOULDBLOCK;  // some disks have no locks
        if (isLocked && part->isOwn()) {
            return std::make_unique<LinuxPartialFile>(std::move(part));
        }
        part->remove();
    }
    return nullptr;
}

void LinuxDownloadFolder::removeLeftovers(const std::filesystem::path& folder) {
    std::error_code failure;
    std::vector<Path> leftovers;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator entry{folder, failure}; !failure && entry != end;
         entry.increment(failure)) {
        if (isPartialFolderName(entry->path().filename().native()))
            leftovers.push_back(entry->path());
    }
    for (const Path& path : leftovers) {
        const LockedFolder part{path};
        if (part.isOwn() && part.lock()) part.remove();
    }
}

}  // namespace orvu
