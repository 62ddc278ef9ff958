#include "platform/linux/confinement/ConfinementProbe.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>

namespace orvu {
namespace {

bool closed(int descriptor) {
    if (descriptor < 0) return false;
    close(descriptor);
    return true;
}

bool opens(const char* file) { return closed(open(file, O_RDONLY | O_CLOEXEC)); }

bool writesFile() {
    constexpr auto file = "/tmp/orvu-confinement-probe";
    const bool made = closed(open(file, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR));
    if (made) unlink(file);
    return made;
}

bool findsFile() {
    struct stat facts{};
    return stat("/", &facts) == 0;
}

bool makesSocket(int family, int type) { return closed(socket(family, type | SOCK_CLOEXEC, 0)); }

/// Whether the system answers for a port of this machine, be it that nobody listens there.
bool reachesLoopback() {
    const int descriptor = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor < 0) return false;
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(1);
    const bool reached =
        connect(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0 ||
        errno == ECONNREFUSED;
    close(descriptor);
    return reached;
}

bool startsProcess() {
    const pid_t child = fork();
    if (child < 0) return false;
    if (child == 0) _exit(0);
    waitpid(child, nullptr, 0);
    return true;
}

bool makesCode() {
    constexpr std::size_t size = 4096;
    void* const memory =
        mmap(nullptr, size, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return false;
    munmap(memory, size);
    return true;
}

/// Not a program that exists: this one would be gone.
bool executes() {
    std::array<char*, 1> none{};
    return execve("/nonexistent", none.data(), none.data()) == 0 || errno == ENOENT;
}

/// No process has the number, which only a call that came through would say.
bool traces() { return ptrace(PTRACE_PEEKDATA, 0, nullptr, nullptr) != -1 || errno == ESRCH; }

int openDescriptors() {
    constexpr int most = 1024;
    int count = 0;
    for (int each = 0; each < most; ++each) {
        const bool isClosed = read(each, nullptr, 0) < 0 && errno == EBADF &&
                              write(each, nullptr, 0) < 0 && errno == EBADF;
        count += !isClosed;
    }
    return count;
}

struct Attempt {
    const char* name;
    bool (*isPossible)();
};

constexpr std::array attempts{
    Attempt{"read a file", [] { return opens("/etc/passwd") || opens("/proc/self/status"); }},
    Attempt{"read a library", [] { return opens("/usr/lib/os-release") || opens("/lib"); }},
    Attempt{"read a folder", [] { return opens("/"); }},
    Attempt{"write a file", writesFile},
    Attempt{"find a file", findsFile},
    Attempt{"make a file in memory", [] { return closed(memfd_create("probe", MFD_CLOEXEC)); }},
    Attempt{"internet socket", [] { return makesSocket(AF_INET, SOCK_STREAM); }},
    Attempt{"internet datagrams", [] { return makesSocket(AF_INET6, SOCK_DGRAM); }},
    Attempt{"local socket", [] { return makesSocket(AF_UNIX, SOCK_STREAM); }},
    Attempt{"reach this machine", reachesLoopback},
    Attempt{"start a process", startsProcess},
    Attempt{"execute a program", executes},
    Attempt{"signal a process", [] { return kill(getppid(), 0) == 0 || kill(1, 0) == 0; }},
    Attempt{"trace a process", traces},
    Attempt{"make code", makesCode},
    Attempt{"be read by others", [] { return prctl(PR_SET_DUMPABLE, 1) == 0; }},
};

}  // namespace

std::string probeConfinement() {
    std::string report;
    for (const Attempt& each : attempts) {
        report += each.name;
        report += each.isPossible() ? ": possible\n" : ": refused\n";
    }
    const bool hasEnvironment = environ && *environ;
    report += std::string{"environment: "} + (hasEnvironment ? "given\n" : "empty\n");
    return report + "descriptors: " + std::to_string(openDescriptors()) + "\n";
}

}  // namespace orvu
