#include "platform/linux/files/LinuxDownloadFolder.h"

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
class OpenPlace {
public:
    explicit OpenPlace(Path path)
        : path_(std::move(path)),
          descriptor_(open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC)) {}
    OpenPlace(const OpenPlace&) = delete;
    OpenPlace& operator=(const OpenPlace&) = delete;
    ~OpenPlace() {
        if (descriptor_ >= 0) close(descriptor_);
    }

    [[nodiscard]] const Path& path() const { return path_; }
    /// Whether it is there and this user's.
    [[nodiscard]] bool isOwn() const {
        struct stat facts{};
        return descriptor_ >= 0 && fstat(descriptor_, &facts) == 0 && facts.st_nlink > 0 &&
               facts.st_uid == geteuid();
    }
    /// False while another process, or another descriptor, has it.
    [[nodiscard]] bool lock() const { return flock(descriptor_, LOCK_EX | LOCK_NB) == 0; }
    /// Fails silently where anything else lies in it.
    void remove() const {
        if (descriptor_ < 0) return;
        unlinkat(descriptor_, fileName, 0);
        unlinkat(descriptor_, engineFileName, 0);
        rmdir(path_.c_str());
    }

private:
    const Path path_;
    const int descriptor_;
};

class LinuxDownloadPlace : public PartialFile {
public:
    explicit LinuxDownloadPlace(std::unique_ptr<OpenPlace> place) : place_(std::move(place)) {}
    ~LinuxDownloadPlace() override { place_->remove(); }

    [[nodiscard]] Path file() const override { return place_->path() / fileName; }
    [[nodiscard]] Move moveTo(const Path& target) override {
        return FileMove::move(file(), target);
    }

private:
    const std::unique_ptr<OpenPlace> place_;
};

bool isPlaceName(std::string_view name) {
    return name.starts_with(LinuxDownloadFolder::placePrefix) &&
           name.size() == LinuxDownloadFolder::placePrefix.size() + randomPart.size();
}

}  // namespace

bool LinuxDownloadFolder::exists(const std::filesystem::path& file) const {
    struct stat facts{};
    return lstat(file.c_str(), &facts) == 0;
}

std::unique_ptr<PartialFile> LinuxDownloadFolder::makePartialFile() {
    std::error_code failure;
    std::filesystem::create_directories(path_, failure);
    // Between its making and its locking, somebody who tidies up may take a place for a leftover.
    for (int tries = 0; tries < 3; ++tries) {
        std::string name = (path_ / placePrefix).string().append(randomPart);
        if (!mkdtemp(name.data())) return nullptr;
        auto place = std::make_unique<OpenPlace>(name);
        const bool isLocked = place->lock() || errno != EWOULDBLOCK;  // some disks have no locks
        if (isLocked && place->isOwn()) {
            return std::make_unique<LinuxDownloadPlace>(std::move(place));
        }
        place->remove();
    }
    return nullptr;
}

void LinuxDownloadFolder::removeLeftovers(const std::filesystem::path& folder) {
    std::error_code failure;
    std::vector<Path> places;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator entry{folder, failure}; !failure && entry != end;
         entry.increment(failure)) {
        if (isPlaceName(entry->path().filename().native())) places.push_back(entry->path());
    }
    for (const Path& path : places) {
        const OpenPlace place{path};
        if (place.isOwn() && place.lock()) place.remove();
    }
}

}  // namespace orvu
