#include "platform/linux/desktop/ChildWatch.h"

#include "platform/linux/files/FileText.h"

#include <glib-unix.h>
#include <sys/syscall.h>
#include <sys/types.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

/// Whether a process of that name runs under that id.
bool runsAs(pid_t process, std::string_view name) {
    const std::string facts = fileText("/proc/" + std::to_string(process) + "/stat").value_or("");
    const auto open = facts.find('(');
    const auto close = facts.rfind(')');
    if (open == std::string::npos || close == std::string::npos) return false;
    if (std::string_view{facts}.substr(open + 1, close - open - 1) != name) return false;
    return facts.size() > close + 2 && facts[close + 2] != 'Z';
}

/// The id of the youngest child of that name; 0 if there is none.
pid_t youngestChild(std::string_view name) {
    pid_t youngest = 0;
    std::error_code failure;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator thread{"/proc/self/task", failure};
         !failure && thread != end; thread.increment(failure)) {
        std::ifstream children{thread->path() / "children"};
        for (pid_t child = 0; children >> child;) {
            if (runsAs(child, name)) youngest = child;  // they come in the order of their birth
        }
    }
    return youngest;
}

}  // namespace

void ChildWatch::start(std::string_view name, std::function<void()> ended) {
    stop();
    const pid_t child = youngestChild(name);
    if (child == 0) return;
    process_.reset(static_cast<int>(syscall(SYS_pidfd_open, child, 0)));
    if (!process_) return;
    ended_ = std::move(ended);
    source_ = g_unix_fd_add(
        process_.get(), G_IO_IN,
        [](int, GIOCondition, gpointer data) -> gboolean {
            auto& self = *static_cast<ChildWatch*>(data);
            self.source_ = 0;
            const auto call = std::exchange(self.ended_, nullptr);
            self.stop();
            call();
            return G_SOURCE_REMOVE;
        },
        this);
}

void ChildWatch::stop() {
    if (const unsigned source = std::exchange(source_, 0)) g_source_remove(source);
    process_.reset();
}

}  // namespace orvu
