#include "platform/linux/confinement/ConfinedProcess.h"

#include <fcntl.h>
#include <glib-unix.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <optional>
#include <system_error>
#include <utility>

namespace orvu {
namespace {

constexpr int fileNumber = STDERR_FILENO + 1;

/// What a new process is given and what is taken from it.
class Inheritance {
public:
    Inheritance(int socket, const FileDescriptor& file) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, socket, STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, socket, STDOUT_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (file) posix_spawn_file_actions_adddup2(&actions_, file.get(), fileNumber);
        posix_spawn_file_actions_addclosefrom_np(&actions_, file ? fileNumber + 1 : fileNumber);
        posix_spawnattr_init(&attributes_);
        sigset_t all;
        sigset_t none;
        sigfillset(&all);
        sigemptyset(&none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setflags(
            &attributes_, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSID);
    }
    Inheritance(const Inheritance&) = delete;
    Inheritance& operator=(const Inheritance&) = delete;
    ~Inheritance() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    /// The id of a process without environment; nothing if there is no such program.
    [[nodiscard]] std::optional<pid_t> spawn(std::vector<std::string>& command) const {
        std::vector<char*> arguments;
        arguments.reserve(command.size() + 1);
        for (std::string& each : command) arguments.push_back(each.data());
        arguments.push_back(nullptr);
        std::array<char*, 1> environment{};
        pid_t process = 0;
        const int error = posix_spawnp(&process, arguments[0], &actions_, &attributes_,
                                       arguments.data(), environment.data());
        return error == 0 ? std::optional{process} : std::nullopt;
    }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

/// Takes the status of a process once it has ended, so that the kernel can forget it.
void reapLater(FileDescriptor process) {
    const int number = process.get();
    g_unix_fd_add_full(
        G_PRIORITY_LOW, number, G_IO_IN,
        [](int ended, GIOCondition, gpointer) -> gboolean {
            siginfo_t ignored;
            waitid(P_PIDFD, static_cast<id_t>(ended), &ignored, WEXITED);
            return G_SOURCE_REMOVE;
        },
        new FileDescriptor{std::move(process)},
        [](gpointer data) { delete static_cast<FileDescriptor*>(data); });
}

}  // namespace

std::filesystem::path ConfinedProcess::installedProgram(const std::string& name) {
    std::error_code failure;
    const auto folder = std::filesystem::read_symlink("/proc/self/exe", failure).parent_path();
    auto beside = folder / name;
    if (std::filesystem::exists(beside, failure)) return beside;
    return (folder / ORVU_PROGRAMS_FOLDER / name).lexically_normal();
}

std::vector<std::string> ConfinedProcess::command(const Program& program, Isolation isolation) {
    std::vector<std::string> command;
    const auto add = [&](std::initializer_list<std::string> words) {
        command.insert(command.end(), words);
    };
    if (isolation == Isolation::own) {
        add({program.file, "--own-namespaces"});
    } else {
        add({"bwrap", "--unshare-all", "--die-with-parent", "--cap-drop", "ALL", "--chdir", "/"});
        for (const auto* folder :
             {"/lib", "/lib64", "/usr/lib", "/usr/lib64", "/usr/local/lib", "/etc/ld.so.cache"}) {
            add({"--ro-bind-try", folder, folder});
        }
        for (const auto& each : program.folders) add({"--ro-bind-try", each, each});
        add({"--ro-bind", program.file, program.file, "--remount-ro", "/", program.file});
    }
    command.insert(command.end(), program.arguments.begin(), program.arguments.end());
    return command;
}

std::unique_ptr<ConfinedProcess> ConfinedProcess::start(std::vector<std::string> command,
                                                        Events events, const FileDescriptor& file) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
    FileDescriptor ours{ends[0]};
    const FileDescriptor theirs{ends[1]};
    const auto started = Inheritance{theirs.get(), file}.spawn(command);
    if (!started) return nullptr;
    // Nobody else waits for it, so until then its number is its own.
    FileDescriptor process{static_cast<int>(syscall(SYS_pidfd_open, *started, 0))};
    if (!process) {
        kill(*started, SIGKILL);
        waitpid(*started, nullptr, 0);
        return nullptr;
    }
    return std::unique_ptr<ConfinedProcess>{
        new ConfinedProcess(std::move(ours), std::move(process), std::move(events))};
}

ConfinedProcess::ConfinedProcess(FileDescriptor socket, FileDescriptor process, Events events)
    : events_(std::move(events)), socket_(std::move(socket)), process_(std::move(process)) {
    hearing_ = g_unix_fd_add(
        socket_.get(), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
        [](int, GIOCondition, gpointer data) -> gboolean {
            static_cast<ConfinedProcess*>(data)->hear();
            return G_SOURCE_CONTINUE;
        },
        this);
}

ConfinedProcess::~ConfinedProcess() {
    if (hearing_ != 0) g_source_remove(hearing_);
    stopWriting();
    syscall(SYS_pidfd_send_signal, process_.get(), SIGKILL, nullptr, 0);
    reapLater(std::move(process_));
}

void ConfinedProcess::hear() {
    std::array<char, 65536> buffer;
    const auto count = recv(socket_.get(), buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count < 0 && (errno == EAGAIN || errno == EINTR)) return;
    if (count > 0) {
        const auto said = events_.said;  // which may end this object
        return said({buffer.data(), static_cast<std::size_t>(count)});
    }
    g_source_remove(std::exchange(hearing_, 0));
    const auto ended = events_.ended;
    ended();
}

void ConfinedProcess::tell(std::string_view bytes) {
    unwritten_ += bytes;
    write();
}

void ConfinedProcess::write() {
    const auto count =
        send(socket_.get(), unwritten_.data(), unwritten_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    if (count > 0) unwritten_.erase(0, static_cast<std::size_t>(count));
    const bool goesOn = count >= 0 || errno == EAGAIN || errno == EINTR;
    if (!goesOn) unwritten_.clear();  // it is gone, which is heard elsewhere
    if (unwritten_.empty()) return stopWriting();
    if (writing_ != 0) return;
    writing_ = g_unix_fd_add(
        socket_.get(), G_IO_OUT,
        [](int, GIOCondition, gpointer data) -> gboolean {
            static_cast<ConfinedProcess*>(data)->write();
            return G_SOURCE_CONTINUE;
        },
        this);
}

void ConfinedProcess::stopWriting() {
    if (const unsigned source = std::exchange(writing_, 0)) g_source_remove(source);
}

}  // namespace orvu
