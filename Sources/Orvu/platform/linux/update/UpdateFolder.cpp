#include "platform/linux/update/UpdateFolder.h"

#include "update/PlainPath.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

constexpr std::size_t longestFacts = 4096;  // bytes

bool writeAndSync(int file, const std::string& text) {
    return ::write(file, text.data(), text.size()) == static_cast<ssize_t>(text.size()) &&
           fsync(file) == 0;
}

}  // namespace

UpdateFolder::UpdateFolder(std::filesystem::path path, Options options)
    : path_(std::move(path)),
      options_(std::move(options)),
      folder_(open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

void UpdateFolder::step() const {
    if (options_.step) options_.step();
}

/// What can't be synced lasts until the computer ends without a warning, at least.
void UpdateFolder::sync() const { fsync(folder_.get()); }

bool UpdateFolder::isTrusted() const {
    struct stat facts{};
    if (!folder_ || fstat(folder_.get(), &facts) != 0 || facts.st_uid != geteuid()) return false;
    const bool othersWrite = (facts.st_mode & S_IWOTH) != 0;
    const bool groupWrites = (facts.st_mode & S_IWGRP) != 0 && facts.st_gid != getegid();
    return !othersWrite && !groupWrites;
}

FileDescriptor UpdateFolder::openLock(const char* name) const {
    return FileDescriptor{
        openat(folder_.get(), name, O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR)};
}

bool UpdateFolder::lock() {
    if (lock_) return true;
    auto file = openLock(UpdateNames::lock);
    if (!file) return false;
    while (flock(file.get(), LOCK_EX) != 0) {
        if (errno != EINTR) return false;
    }
    lock_ = std::move(file);
    return true;
}

bool UpdateFolder::claimRun() {
    run_ = openLock(UpdateNames::running);
    if (!run_) return true;
    if (flock(run_.get(), LOCK_EX | LOCK_NB) != 0) return errno != EWOULDBLOCK;
    fcntl(run_.get(), F_SETFD, 0);  // the program inherits it
    setenv(UpdateNames::runVariable, std::to_string(run_.get()).c_str(), 1);
    return true;
}

void UpdateFolder::keepRunLock() {
    const char* const text = std::getenv(UpdateNames::runVariable);
    const auto number = text ? plainNumber(text) : -1;
    unsetenv(UpdateNames::runVariable);
    if (number <= STDERR_FILENO || number > INT32_MAX) return;
    fcntl(static_cast<int>(number), F_SETFD, FD_CLOEXEC);
}

bool UpdateFolder::hasFolder(const char* name) const {
    struct stat facts{};
    return fstatat(folder_.get(), name, &facts, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(facts.st_mode);
}

ApplicationFacts UpdateFolder::facts(const char* name) const {
    if (!hasFolder(name)) return {};
    const auto text =
        read(std::string{name}.append("/").append(ApplicationFacts::fileName), longestFacts);
    return ApplicationFacts::parse(text.value_or(""));
}

std::optional<std::string> UpdateFolder::read(const std::string& name, std::size_t limit) const {
    const FileDescriptor file{
        openat(folder_.get(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC)};
    struct stat facts{};
    if (!file || fstat(file.get(), &facts) != 0 || !S_ISREG(facts.st_mode)) return std::nullopt;
    if (facts.st_uid != geteuid() || static_cast<std::size_t>(facts.st_size) > limit) {
        return std::nullopt;
    }
    std::string text(static_cast<std::size_t>(facts.st_size), '\0');
    const ssize_t count = ::read(file.get(), text.data(), text.size());
    return count == facts.st_size ? std::optional{text} : std::nullopt;
}

bool UpdateFolder::write(const char* name, const char* draft, const std::string& text) {
    step();
    unlinkat(folder_.get(), draft, 0);
    const FileDescriptor file{openat(folder_.get(), draft,
                                     O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC,
                                     S_IRUSR | S_IWUSR)};
    const bool isWritten = file && writeAndSync(file.get(), text);
    if (isWritten && rename(draft, name)) return true;
    unlinkat(folder_.get(), draft, 0);
    return false;
}

bool UpdateFolder::rename(const char* from, const char* to) {
    step();
    if (renameat(folder_.get(), from, folder_.get(), to) != 0) return false;
    sync();
    return true;
}

bool UpdateFolder::exchange(const char* one, const char* other) {
    step();
    if (!options_.canExchange) return false;
    if (renameat2(folder_.get(), one, folder_.get(), other, RENAME_EXCHANGE) != 0) return false;
    sync();
    return true;
}

bool UpdateFolder::remove(const char* name) {
    step();
    std::error_code failure;
    std::filesystem::remove_all(path_ / name, failure);
    sync();
    return !failure;
}

}  // namespace orvu
