#include "platform/linux/update/SwapLauncher.h"

#include "platform/linux/files/FileDescriptor.h"
#include "update/PlainPath.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <system_error>
#include <thread>

namespace orvu {
namespace {

constexpr int handleNumber = 3;  // in the program that is started
constexpr std::chrono::milliseconds pollInterval{200};

/// The files and the session of the program that is started.
class SpawnSettings {
public:
    explicit SpawnSettings(int handle) {
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID);
        posix_spawn_file_actions_init(&actions_);
        for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
            posix_spawn_file_actions_addopen(&actions_, standard, "/dev/null", O_RDWR, 0);
        }
        if (handle >= 0) posix_spawn_file_actions_adddup2(&actions_, handle, handleNumber);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    [[nodiscard]] int spawn(const char* program, char* const* arguments) const {
        pid_t child = 0;
        return posix_spawn(&child, program, &actions_, &attributes_, arguments, environ);
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

bool isAlive(pid_t process) { return kill(process, 0) == 0 || errno != ESRCH; }

void waitForHandle(int handle) {
    pollfd waited{.fd = handle, .events = POLLIN, .revents = 0};
    while (poll(&waited, 1, -1) < 0 && errno == EINTR) continue;
}

}  // namespace

std::optional<std::string> SwapLauncher::launch(const std::filesystem::path& starter,
                                                const std::filesystem::path& folder,
                                                AfterSwap after) {
    // A handle, unlike a number, can't come to mean another process. Old kernels have none.
    const FileDescriptor handle{static_cast<int>(syscall(SYS_pidfd_open, getpid(), 0))};
    std::string path = starter.native();
    std::string command = "--swap";
    std::string process =
        handle ? "fd:" + std::to_string(handleNumber) : "pid:" + std::to_string(getpid());
    std::string then = after == AfterSwap::startAgain ? "again" : "only";
    std::string place = folder.native();
    const std::array<char*, 6> arguments{path.data(), command.data(), process.data(),
                                         then.data(), place.data(),   nullptr};
    const int failure = SpawnSettings{handle.get()}.spawn(path.c_str(), arguments.data());
    if (failure == 0) return std::nullopt;
    return std::generic_category().message(failure);
}

bool SwapLauncher::waitFor(const std::string& name) {
    const bool isHandle = name.starts_with("fd:");
    if (!isHandle && !name.starts_with("pid:")) return false;
    const auto number = plainNumber(std::string_view{name}.substr(name.find(':') + 1));
    if (number <= 0 || number > INT32_MAX) return false;
    if (isHandle) {
        waitForHandle(static_cast<int>(number));
        return true;
    }
    while (isAlive(static_cast<pid_t>(number))) std::this_thread::sleep_for(pollInterval);
    return true;
}

}  // namespace orvu
