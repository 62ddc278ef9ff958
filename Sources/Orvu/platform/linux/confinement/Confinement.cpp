#include "platform/linux/confinement/Confinement.h"

#include "platform/linux/confinement/CallFilter.h"

#include <linux/landlock.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>

namespace orvu {
namespace {

constexpr rlim_t openLimit = 32;
constexpr rlim_t threadLimit = 64;  // letters take some threads for a moment

void limit(__rlimit_resource_t resource, rlim_t most) {
    const rlimit both{most, most};
    static_cast<void>(setrlimit(resource, &both));
}

/// Ends with the parent, and is no business of others. The kernel takes both back where a process
/// gets rights in a namespace of its own.
void standApart() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_DUMPABLE, 0);
}

/// As the kernel has it; the header of an older system lacks the later members.
struct LandlockRules {
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scoped;
};

/// All that a version of the kernel's interface can forbid: the lowest bits of each set.
LandlockRules everythingOf(long version) {
    const auto bits = [](int count) { return (std::uint64_t{1} << count) - 1; };
    constexpr long withRename = 2;
    constexpr long withTruncate = 3;
    constexpr long withNetwork = 4;
    constexpr long withDevices = 5;
    constexpr long withScopes = 6;
    int files = 13;
    for (const long each : {withRename, withTruncate, withDevices}) files += version >= each;
    return {bits(files), version >= withNetwork ? bits(2) : 0, version >= withScopes ? bits(2) : 0};
}

}  // namespace

void limitResources(const ResourceLimits& limits) {
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    standApart();
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_AS, limits.memory);
    limit(RLIMIT_CPU, limits.seconds);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_NOFILE, openLimit);
    limit(RLIMIT_MEMLOCK, 0);
    limit(RLIMIT_MSGQUEUE, 0);
}

void limitThreads() { limit(RLIMIT_NPROC, threadLimit); }

bool leaveNamespaces() {
    constexpr int others = CLONE_NEWNET | CLONE_NEWIPC | CLONE_NEWUTS | CLONE_NEWCGROUP;
    const bool left = unshare(CLONE_NEWUSER | others) == 0 || unshare(others) == 0;
    standApart();
    return left;
}

bool giveUpFiles() {
    const long version =
        syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) return false;
    const LandlockRules rules = everythingOf(version);
    const auto set =
        static_cast<int>(syscall(SYS_landlock_create_ruleset, &rules, sizeof(rules), 0));
    if (set < 0) return false;
    const bool done = syscall(SYS_landlock_restrict_self, set, 0) == 0;
    close(set);
    return done;
}

bool giveUpCalls(std::initializer_list<long> furtherCalls) {
    return installCallFilter(furtherCalls);
}

}  // namespace orvu
