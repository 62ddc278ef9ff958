#include "platform/linux/defaults/DatabaseFile.h"

#include "platform/linux/files/FileMove.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <set>
#include <string>
#include <system_error>
#include <thread>

namespace orvu {
namespace {

namespace fs = std::filesystem;

/// What a database may consist of: the file itself, its log, the log's index, its journal.
constexpr std::array suffixes{"", "-wal", "-shm", "-journal"};
const std::string asideEnding = ".damaged-";

bool isThere(const fs::path& path) {
    struct stat status{};
    return lstat(path.c_str(), &status) == 0;
}

/// A shorter file is no database, but the library takes some of them for an empty one.
constexpr std::uintmax_t headerSize = 100;

/// By its name: to open and close a database's file would end this process's locks on it.
void narrowToOwner(const fs::path& path) {
    struct stat status{};
    if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    if ((status.st_mode & ALLPERMS) != ownerOnly) chmod(path.c_str(), ownerOnly);
}

}  // namespace

DatabaseFile::DatabaseFile(const fs::path& path) {
    std::error_code failure;
    // A link is followed, since the log stands beside the real file.
    path_ = fs::weakly_canonical(path, failure);
    if (failure || path_.empty()) path_ = path;
}

bool DatabaseFile::makeFolder() const {
    std::error_code failure;
    for (auto next = fs::path{}; const auto& name : folder()) {
        next /= name;
        mkdir(next.c_str(), S_IRWXU);  // fails where there is one already
    }
    return fs::is_directory(folder(), failure);
}

void DatabaseFile::makePrivate() const {
    const FileDescriptor made{
        open(path_.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, S_IRUSR | S_IWUSR)};
    for (const char* const suffix : suffixes) narrowToOwner(beside(suffix));
}

bool DatabaseFile::isUnusable() const {
    std::error_code failure;
    const auto status = fs::status(path_, failure);
    if (fs::exists(status) && !fs::is_regular_file(status)) return true;
    if (!hasContent()) return hasLog();
    if (fs::file_size(path_, failure) < headerSize) return true;
    return faccessat(AT_FDCWD, path_.c_str(), R_OK | W_OK, AT_EACCESS) != 0 && errno == EACCES;
}

bool DatabaseFile::hasContent() const {
    std::error_code failure;
    return fs::is_regular_file(path_, failure) && fs::file_size(path_, failure) > 0;
}

bool DatabaseFile::hasLog() const {
    std::error_code failure;
    return fs::file_size(beside("-wal"), failure) > 0 && !failure;
}

bool DatabaseFile::isFolder() const {
    std::error_code failure;
    return fs::is_directory(path_, failure);
}

bool DatabaseFile::isWritable() const {
    return faccessat(AT_FDCWD, path_.c_str(), W_OK, AT_EACCESS) == 0;
}

bool DatabaseFile::isAbsent() const {
    std::error_code failure;
    const auto status = fs::status(path_, failure);
    if (fs::exists(status) && !fs::is_regular_file(status)) return false;
    return !hasContent() && !hasLog();
}

std::optional<DatabaseFile> DatabaseFile::setAside() const {
    const auto isFree = [](const DatabaseFile& name) {
        for (const char* const suffix : suffixes) {
            if (isThere(name.beside(suffix))) return false;
        }
        return true;
    };
    DatabaseFile aside = *this;
    int number = 0;
    do {
        aside = sibling((asideEnding + std::to_string(++number)).c_str());
    } while (!isFree(aside));
    for (const char* const suffix : suffixes) {
        const auto present = beside(suffix);
        if (!isThere(present)) continue;
        if (FileMove::move(present, aside.beside(suffix)) != PartialFile::Move::done) {
            return std::nullopt;
        }
    }
    return aside;
}

std::vector<DatabaseFile> DatabaseFile::filesSetAside() const {
    const std::string start = path_.filename().string() + asideEnding;
    std::set<std::string> numbers;  // each once, whether it has a file, a log or both
    std::error_code failure;
    for (fs::directory_iterator entry{folder(), failure}; entry != fs::directory_iterator{};
         entry.increment(failure)) {
        if (failure) break;
        const std::string name = entry->path().filename().string();
        if (!name.starts_with(start)) continue;
        const auto end = std::min(name.find_first_not_of("0123456789", start.size()), name.size());
        if (end > start.size()) numbers.insert(name.substr(start.size(), end - start.size()));
    }
    std::vector<DatabaseFile> result;
    result.reserve(numbers.size());
    for (const auto& number : numbers) result.push_back(sibling((asideEnding + number).c_str()));
    return result;
}

DatabaseFile DatabaseFile::sibling(const char* ending) const {
    DatabaseFile result = *this;
    result.path_ += ending;
    return result;
}

bool DatabaseFile::replace(const DatabaseFile& other) const {
    std::error_code failure;
    fs::rename(path_, other.path_, failure);
    return !failure;
}

bool DatabaseFile::remove() const {
    std::error_code failure;
    fs::remove(path_, failure);
    return removeCompanions() && !isThere(path_);
}

bool DatabaseFile::removeCompanions() const {
    bool areGone = true;
    for (const char* const suffix : suffixes) {
        if (*suffix == '\0') continue;
        std::error_code failure;
        fs::remove(beside(suffix), failure);
        areGone = areGone && !isThere(beside(suffix));
    }
    return areGone;
}

std::optional<DatabaseFile::Identity> DatabaseFile::identity() const {
    struct stat status{};
    if (stat(path_.c_str(), &status) != 0) return std::nullopt;
    return Identity{status.st_dev, status.st_ino};
}

fs::path DatabaseFile::beside(const char* suffix) const {
    fs::path result = path_;
    result += suffix;
    return result;
}

FolderLock::FolderLock(const fs::path& folder, std::try_to_lock_t)
    : folder_(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    attempt();
}

FolderLock::FolderLock(const fs::path& folder) : FolderLock(folder, std::try_to_lock) {
    constexpr std::chrono::milliseconds pause{10};
    constexpr int attempts = 100;
    for (int number = 1; number < attempts && !isHeld_ && errno == EWOULDBLOCK; ++number) {
        std::this_thread::sleep_for(pause);
        attempt();
    }
}

void FolderLock::attempt() {
    errno = 0;
    isHeld_ = folder_ && flock(folder_.get(), LOCK_EX | LOCK_NB) == 0;
}

}  // namespace orvu
