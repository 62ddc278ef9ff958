#include "platform/linux/desktop/SandboxProbe.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string_view>

namespace orvu {
namespace {

bool isSwitchedOff() {
    const char* const value = std::getenv("WEBKIT_DISABLE_SANDBOX_THIS_IS_DANGEROUS");
    return value && std::string_view{value} == "1";
}

}  // namespace

SandboxProbe::SandboxProbe() {
    if (isSwitchedOff()) return;
    // The engine's own calls fail exactly when this one does.
    std::array<const char*, 7> arguments{"bwrap",         "--ro-bind", "/",    "/",
                                         "--unshare-pid", "true",      nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    const int error = posix_spawnp(&process_, arguments[0], &actions, nullptr,
                                   const_cast<char**>(arguments.data()), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0) {
        process_ = 0;
        result_ = false;
    }
}

SandboxProbe::~SandboxProbe() { static_cast<void>(canStartPages()); }

bool SandboxProbe::canStartPages() {
    if (process_ == 0) return result_;
    int status = 0;
    pid_t ended = 0;
    do {
        ended = waitpid(process_, &status, 0);
    } while (ended < 0 && errno == EINTR);
    process_ = 0;
    result_ = ended > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    return result_;
}

}  // namespace orvu
